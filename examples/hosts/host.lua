-- A game in Lua, for LuaJIT: it greets the player with a popup and prints what the player chose.
-- usage: luajit host.lua RESOURCES SERVICE, with the library's path in ZOVKPOPUP_LIBRARY if need be
local ffi = require("ffi")

-- The structs as far as this game knows them; the library takes the rest for defaults.
ffi.cdef [[
  typedef void (*event)(void* user);
  typedef void (*complete)(int32_t code, const char* message, void* user);
  typedef struct { size_t size; const char* application_id; const char* resource_directory; } settings;
  typedef struct { size_t size; event popups_will_appear, popups_did_disappear; } hooks;
  const char* zovkpopup_version(void);
  const char* zovkpopup_error_message(int32_t status);
  int32_t zovkpopup_set_up(const settings* settings);
  int32_t zovkpopup_set_hooks(const hooks* hooks);
  int32_t zovkpopup_start(const char* base_url, const char* game_id, const char* game_key);
  bool zovkpopup_have_popup(uint64_t scene_type);
  int32_t zovkpopup_show_popup(const char* scene, uint64_t scene_type, complete complete,
                               void* user, event destroy);
  int32_t zovkpopup_pump(uint32_t budget_microseconds);
  int zovkpopup_poll_descriptor(void);
  int32_t zovkpopup_shut_down(void);

  typedef struct { int fd; short events, revents; } pollfd;
  int poll(pollfd* descriptors, unsigned long count, int milliseconds);
]]
local popups = ffi.load(os.getenv("ZOVKPOPUP_LIBRARY") or "libzovkpopup.so.1")
local READABLE = 1

local function check(status)
  if status ~= 0 then error(ffi.string(popups.zovkpopup_error_message(status))) end
end

local game = {paused = false, answered = false}

-- Lua keeps the functions that it lends to C for as long as it runs.
local pause = ffi.cast("event", function() game.paused = true end)
local resume = ffi.cast("event", function() game.paused = false end)
local answered = ffi.cast("complete", function(code, message)
  print("answer " .. code .. " " .. ffi.string(message))
  game.answered = true
end)

-- A call that C is to come back from must not be compiled.
local function run_frame(event)
  event.fd = popups.zovkpopup_poll_descriptor()
  ffi.C.poll(event, 1, 16)
  popups.zovkpopup_pump(2000)
end
jit.off(run_frame)

local resources, service = ...
check(popups.zovkpopup_set_up(ffi.new("settings", ffi.sizeof("settings"), "hello-host", resources)))
check(popups.zovkpopup_set_hooks(ffi.new("hooks", ffi.sizeof("hooks"), pause, resume)))
check(popups.zovkpopup_start(service, "1", "key"))
local have = popups.zovkpopup_have_popup(1) and "yes" or "no"
print("version " .. ffi.string(popups.zovkpopup_version()) .. ", a popup: " .. have)
io.stdout:flush()

check(popups.zovkpopup_show_popup("hello", 0, answered, nil, nil))
local event = ffi.new("pollfd", 0, READABLE, 0)
while not game.answered or game.paused do run_frame(event) end
popups.zovkpopup_shut_down()
