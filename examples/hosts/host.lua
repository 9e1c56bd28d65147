-- A game in Lua, for LuaJIT: it greets the player with a popup and prints what the player chose.
-- usage: luajit host.lua RESOURCES SERVICE, with zovkpopup.lua in LUA_PATH
local ffi = require("ffi")
local popups = require("zovkpopup")

ffi.cdef [[
  typedef struct { int fd; short events, revents; } pollfd;
  int poll(pollfd* descriptors, unsigned long count, int milliseconds);
]]
local READABLE = 1

local game = {paused = false, answered = false}

-- Lua keeps the functions that it lends to C for as long as it runs.
local pause = ffi.cast("zovkpopup_event", function() game.paused = true end)
local resume = ffi.cast("zovkpopup_event", function() game.paused = false end)
local answered = ffi.cast("zovkpopup_complete", function(code, message)
  print("answer " .. code .. " " .. ffi.string(message))
  game.answered = true
end)

-- A call that C is to come back from must not be compiled.
local function run_frame(event)
  event.fd = popups.poll_descriptor()
  ffi.C.poll(event, 1, 16)
  popups.pump(2000)
end
jit.off(run_frame)

local resources, service = ...
popups.check(popups.set_up(popups.struct("settings", {
  application_id = "hello-host", resource_directory = resources})))
popups.check(popups.set_hooks(popups.struct("hooks", {
  popups_will_appear = pause, popups_did_disappear = resume})))
popups.check(popups.start(service, "1", "key"))
local have = popups.have_popup(1) and "yes" or "no"
print("version " .. ffi.string(popups.version()) .. ", a popup: " .. have)
io.stdout:flush()

popups.check(popups.show_popup("hello", 0, answered, nil, nil))
local event = ffi.new("pollfd", 0, READABLE, 0)
while not game.answered or game.paused do run_frame(event) end
popups.shut_down()
