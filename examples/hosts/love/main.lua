-- A game with LÖVE: popups stand over its window, and its sound pauses meanwhile.
-- usage: love FOLDER RESOURCES SERVICE, with zovkpopup.lua in LUA_PATH or beside this file
local ffi = require("ffi")
local popups = require("zovkpopup")

-- LÖVE does not name its window, but it uses SDL, which does.
ffi.cdef [[
  typedef struct {
    uint8_t major, minor, patch;
    int subsystem;
    struct { void* display; unsigned long window; char more[64]; } info;
  } SDL_SysWMinfo;
  void* SDL_GL_GetCurrentWindow(void);
  int SDL_GetWindowWMInfo(void* window, SDL_SysWMinfo* info);
]]
local SDL = ffi.load("libSDL2-2.0.so.0")
local SDL_SYSWM_X11 = 2

local function window_name()
  local info = ffi.new("SDL_SysWMinfo", {major = 2, minor = 0, patch = 10})
  local known = SDL.SDL_GetWindowWMInfo(SDL.SDL_GL_GetCurrentWindow(), info) == 1
  if not known or info.subsystem ~= SDL_SYSWM_X11 then return nil end
  return "x11:" .. tostring(info.info.window):match("%d+")
end

-- The library calls these later, so the game keeps them.
local paused = {}
local pause = ffi.cast("zovkpopup_event", function() paused = love.audio.pause() end)
local resume = ffi.cast("zovkpopup_event", function() love.audio.play(paused) end)
local answered = ffi.cast("zovkpopup_complete", function(code, message)
  print("answer " .. code .. " " .. ffi.string(message))
  love.event.quit()
end)

function love.load(arguments)
  local resources, service = arguments[1], arguments[2]
  popups.check(popups.set_up(popups.struct("settings", {
    application_id = "hello-host", resource_directory = resources, game_window = window_name()})))
  popups.check(popups.set_hooks(popups.struct("hooks", {
    popups_will_appear = pause, popups_did_disappear = resume})))
  popups.check(popups.start(service, "1", "key"))
  local have = popups.have_popup(1) and "yes" or "no"
  print("version " .. ffi.string(popups.version()) .. ", a popup: " .. have)
  io.stdout:flush()
  popups.check(popups.show_popup("hello", 0, answered, nil, nil))
end

function love.update() popups.pump(2000) end

function love.draw() love.graphics.clear(0.08, 0.12, 0.24) end

function love.quit() popups.shut_down() end

-- A function from which C calls back must not be compiled.
jit.off(love.load)
jit.off(love.update)
