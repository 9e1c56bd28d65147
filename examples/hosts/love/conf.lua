function love.conf(settings)
  settings.identity = "hello-host"
  settings.window.title = "hello-host"
  settings.window.width, settings.window.height = 960, 540
end
