-- ZOVKPopup for LuaJIT, by its FFI. Made from zovkpopup.h by bindings/generate.py.
-- local popups = require("zovkpopup"); then popups.set_up(nil), popups.OK and so on.
-- A call from which the library calls back must not be compiled: jit.off(that function).
local ffi = require("ffi")

ffi.cdef [[
typedef int32_t zovkpopup_status;
typedef struct zovkpopup_explanation zovkpopup_explanation;
typedef struct zovkpopup_web_window zovkpopup_web_window;
typedef struct zovkpopup_response zovkpopup_response;
typedef struct zovkpopup_picture zovkpopup_picture;
typedef struct zovkpopup_settings zovkpopup_settings;
typedef struct zovkpopup_hooks zovkpopup_hooks;
typedef struct zovkpopup_explained_popup zovkpopup_explained_popup;
typedef struct zovkpopup_web_window_settings zovkpopup_web_window_settings;
typedef void (*zovkpopup_destroy)(void *);
typedef void (*zovkpopup_event)(void *);
typedef void (*zovkpopup_text_event)(const char *, void *);
typedef void (*zovkpopup_log)(const char *, void *);
typedef void (*zovkpopup_complete)(int32_t, const char *, void *);
typedef void (*zovkpopup_backdrop)(zovkpopup_picture *, void *);
typedef bool (*zovkpopup_allow_navigation)(const char *, int32_t, void *);
typedef void (*zovkpopup_script_result)(const char *, const char *, void *);
typedef void (*zovkpopup_handler)(const char *, zovkpopup_response *, void *);
typedef void (*zovkpopup_answer)(const char *, void *);
// A frame of the game's, in memory of the game's.
struct zovkpopup_picture {
  size_t size;
  const void *pixels;
  uint64_t width;
  uint64_t height;
  int64_t stride;
  uint64_t format;
};
// What a game may say about itself. Every member but `size` has a default: zero.
struct zovkpopup_settings {
  size_t size;
  const char *application_id;
  const char *resource_directory;
  const char *data_directory;
  const char *helper_path;
  uint64_t native_window;
  const char *certificate_authority;
  zovkpopup_log log;
  void *log_user;
  zovkpopup_destroy log_destroy;
  uint64_t page_memory;
  const char *drawing;
  const char *game_window;
  const char *popup_window;
  zovkpopup_backdrop backdrop;
  void *backdrop_user;
  zovkpopup_destroy backdrop_destroy;
  uint64_t ready_seconds;
};
// Around the time in which popups cover the game. Every member but `size` may be NULL.
struct zovkpopup_hooks {
  size_t size;
  zovkpopup_event popups_will_appear;
  zovkpopup_event popups_did_disappear;
  void *user;
  zovkpopup_destroy destroy;
};
// What the selection thinks of one popup. The texts belong to the explanation.
struct zovkpopup_explained_popup {
  size_t size;
  const char *scene;
  const char *page;
  const char *verdict;
  const char *wanted;
  const char *found;
  const char *sentence;
  uint64_t rank;
  int64_t pop_id;
};
// What a web window shows, and who hears of it. Exactly one of `address` and `page_file` is
// given; all else may be zero.
struct zovkpopup_web_window_settings {
  size_t size;
  const char *address;
  const char *page_file;
  double x;
  double y;
  double width;
  double height;
  uint64_t see_through;
  zovkpopup_event page_changed;
  zovkpopup_text_event failed;
  zovkpopup_allow_navigation allow_navigation;
  zovkpopup_event load_started;
  zovkpopup_event load_finished;
  zovkpopup_text_event load_failed;
  zovkpopup_event page_process_ended;
  zovkpopup_text_event new_window_asked;
  void *user;
  zovkpopup_destroy destroy;
};
// The version of the library that runs; it may be a newer one than the header's. Any thread.
const char *zovkpopup_version(void);
uint32_t zovkpopup_version_number(void);
// What a status means, in English; never NULL, and not to be freed. Any thread.
const char *zovkpopup_error_message(zovkpopup_status status);
// Call it once before anything else, and again only after `zovkpopup_shut_down`. NULL is all
// defaults. ZOVKPOPUP_ERROR_STATE when it was called before, or the popups are already in use.
zovkpopup_status zovkpopup_set_up(const zovkpopup_settings *settings);
// Runs what is due and returns; never waits. Call it once a frame. No task is begun after so many
// microseconds, 2,000 say; what is left is run by the next call. Has no effect within a callback.
zovkpopup_status zovkpopup_pump(uint32_t budget_microseconds);
// A file descriptor that is readable when `zovkpopup_pump` has something to do, for games with an
// event loop; -1 when not set up. The library owns it, until `zovkpopup_shut_down`.
int zovkpopup_poll_descriptor(void);
// Sets the hooks in place of earlier ones. They stay until `zovkpopup_shut_down`.
zovkpopup_status zovkpopup_set_hooks(const zovkpopup_hooks *hooks);
// Holds popups back, for a cut-scene or a match: requests wait, what is on screen stays.
zovkpopup_status zovkpopup_hold_popups(void);
// Lets them go on, with what has waited first.
zovkpopup_status zovkpopup_release_popups(void);
// Tells that the game's own window took the keyboard, or lost it. Not needed with
// `native_window`.
zovkpopup_status zovkpopup_game_window_did_become_key(void);
zovkpopup_status zovkpopup_game_window_did_resign_key(void);
// Hands a press of a game pad, one of `zovkpopup_game_pad`, to the popup or web window in front;
// nothing happens when there is none. The game reads its pads; what is held is not repeated. The
// names are what is written on the player's buttons that press and leave, "A" and "B" where NULL:
// a line at the foot of the popup shows them. ZOVKPOPUP_ERROR_ARGUMENT for a number that is none
// of the above.
zovkpopup_status zovkpopup_game_pad_did_press(uint32_t press, const char *press_name, const char *leave_name);
// Tells how large the game's own window is, in logical pixels: on Wayland once after
// `zovkpopup_set_up` and whenever it changes. On X11 it is seen without.
zovkpopup_status zovkpopup_game_window_did_resize(int32_t width, int32_t height);
// Ends everything within two seconds: an open popup closes, web windows close, and no callback is
// called any more but `destroy`. May be called twice.
zovkpopup_status zovkpopup_shut_down(void);
// Starts the popups: once per process, later calls are ignored. `base_url` is the address of the
// popup service, without a trailing slash. NULL counts as empty; without a service the popups are
// those that were shipped with the game and those of an earlier answer.
zovkpopup_status zovkpopup_start(const char *base_url, const char *game_id, const char *game_key);
// Tells who the player is; what is not known may be NULL. Any number of times.
zovkpopup_status zovkpopup_set_channel_id(int32_t channel_id, const char *open_id, const char *token, const char *jwt_token);
// Whether a popup for this scene type would be shown now; false after an error, too.
bool zovkpopup_have_popup(uint64_t scene_type);
// Shows the popup of a scene, or, when `scene` is NULL or empty, every valid popup of the scene
// type, best first. Requests are shown one after another. `complete`, which may be NULL, is
// called once at the most: at once, from within this call, when there is nothing to show and when
// the call fails; not at all when a conditional popup commits with none behind it, and when the
// host is shut down before. A request whose popup may not be shown after all, as its service does
// not want it, or whose page commits without an address to report to, ends with 0 and "reatin
// complete". Popups behind one that is cancelled are not shown.
zovkpopup_status zovkpopup_show_popup(const char *scene, uint64_t scene_type, zovkpopup_complete complete, void *user, zovkpopup_destroy destroy);
// Shows the privacy policy if a newer one was published than the player last saw. Otherwise
// `complete` is called at once with -1 and "".
zovkpopup_status zovkpopup_show_policy(zovkpopup_complete complete, void *user, zovkpopup_destroy destroy);
// Tells what `zovkpopup_show_popup` would select now, and why, without showing anything. Any
// thread, and so with all functions of an explanation.
zovkpopup_status zovkpopup_explain(const char *scene, uint64_t scene_type, zovkpopup_explanation **explanation);
// How the whole request would go. NULL for NULL.
const char *zovkpopup_explanation_sentence(const zovkpopup_explanation *explanation);
// How many popups were looked at. 0 for NULL.
size_t zovkpopup_explanation_popup_count(const zovkpopup_explanation *explanation);
// Fills `popup`, of which the caller has set the size, with the one at `index`, from 0, in the
// order in which they are looked at.
zovkpopup_status zovkpopup_explanation_popup(const zovkpopup_explanation *explanation, size_t index, zovkpopup_explained_popup *popup);
void zovkpopup_explanation_free(zovkpopup_explanation *explanation);
// Opens a window and begins to load its page. `window` is set to NULL when that fails. Handlers
// that are registered before the next pump miss nothing.
zovkpopup_status zovkpopup_web_window_open(const zovkpopup_web_window_settings *settings, zovkpopup_web_window **window);
// Closes the window and lets its callbacks and handlers go; none is called any more, but those of
// scripts under way. The handle stays. May be called twice, and within any of its callbacks.
zovkpopup_status zovkpopup_web_window_close(zovkpopup_web_window *window);
// Closes the window if need be, and frees the handle; also after the host was shut down, and
// within any of its callbacks.
void zovkpopup_web_window_free(zovkpopup_web_window *window);
// False after it was closed, after a failure, and after the host was shut down.
bool zovkpopup_web_window_is_open(const zovkpopup_web_window *window);
// Loads the page anew.
zovkpopup_status zovkpopup_web_window_reload(zovkpopup_web_window *window);
// Runs a script in the page. `result`, which may be NULL, is called once unless the call fails or
// the host is shut down before; with an error when the window closes before.
zovkpopup_status zovkpopup_web_window_evaluate(zovkpopup_web_window *window, const char *script, zovkpopup_script_result result, void *user, zovkpopup_destroy destroy);
// Answers the page, with NULL for nothing. Once; the second time is ZOVKPOPUP_ERROR_STATE. After
// a ZOVKPOPUP_ERROR_JSON it may be answered still. The answer to a page that is gone goes
// nowhere, which is no error, and a page that wants no answer gets none. Any thread, one at a
// time.
zovkpopup_status zovkpopup_response_send(zovkpopup_response *response, const char *json);
// Any thread.
void zovkpopup_response_free(zovkpopup_response *response);
// Lets the page call `handler`, in place of any earlier one of that name.
zovkpopup_status zovkpopup_web_window_register_handler(zovkpopup_web_window *window, const char *name, zovkpopup_handler handler, void *user, zovkpopup_destroy destroy);
zovkpopup_status zovkpopup_web_window_remove_handler(zovkpopup_web_window *window, const char *name);
// Calls a handler of the page. `json` may be NULL for no data, `answer` for no answer. `answer`
// is called once at most, and kept until the page answers, is left, or the window closes.
zovkpopup_status zovkpopup_web_window_call_handler(zovkpopup_web_window *window, const char *name, const char *json, zovkpopup_answer answer, void *user, zovkpopup_destroy destroy);
// Sends data to no handler in particular; the page warns on its console that it has none for it.
zovkpopup_status zovkpopup_web_window_send(zovkpopup_web_window *window, const char *json, zovkpopup_answer answer, void *user, zovkpopup_destroy destroy);
// Forgets callbacks that wait for the page, and holds messages back until it asks for the bridge:
// before a reload in which no message is to be lost.
zovkpopup_status zovkpopup_web_window_reset_bridge(zovkpopup_web_window *window);
// Sends what was held back, without waiting for the page to ask.
zovkpopup_status zovkpopup_web_window_send_held(zovkpopup_web_window *window);
// Tells the page to handle messages at once. Only for pages that open no dialogs.
zovkpopup_status zovkpopup_web_window_disable_alert_box_safety_timeout(zovkpopup_web_window *window);
// Writes the traffic of all bridges to the log, from now on, each message up to so many
// characters; a number below 0 stands for all of them. Any thread.
zovkpopup_status zovkpopup_log_bridges(int32_t longest_message);
]]

local library = ffi.load(os.getenv("ZOVKPOPUP_LIBRARY") or "libzovkpopup.so.1")
local popups = {library = library}

popups.OK = 0
popups.ERROR_ARGUMENT = -1
popups.ERROR_SIZE = -2
popups.ERROR_JSON = -3
popups.ERROR_STATE = -4
popups.ERROR_THREAD = -5
popups.ERROR_MEMORY = -6
popups.ERROR_INTERNAL = -7
popups.RESULT_ERROR = -1
popups.RESULT_SKIP = 0
popups.RESULT_COMMIT = 1
popups.RESULT_CANCEL = 2
popups.PIXELS_BGRX = 0
popups.PIXELS_RGBX = 1
popups.PIXELS_RGB = 2
popups.GAME_PAD_UP = 0
popups.GAME_PAD_DOWN = 1
popups.GAME_PAD_LEFT = 2
popups.GAME_PAD_RIGHT = 3
popups.GAME_PAD_PRESS = 4
popups.GAME_PAD_LEAVE = 5
popups.FRAME_NEW_WINDOW = 0
popups.FRAME_MAIN = 1
popups.FRAME_SUB = 2

for _, name in ipairs {
  "version",
  "version_number",
  "error_message",
  "set_up",
  "pump",
  "poll_descriptor",
  "set_hooks",
  "hold_popups",
  "release_popups",
  "game_window_did_become_key",
  "game_window_did_resign_key",
  "game_pad_did_press",
  "game_window_did_resize",
  "shut_down",
  "start",
  "set_channel_id",
  "have_popup",
  "show_popup",
  "show_policy",
  "explain",
  "explanation_sentence",
  "explanation_popup_count",
  "explanation_popup",
  "explanation_free",
  "web_window_open",
  "web_window_close",
  "web_window_free",
  "web_window_is_open",
  "web_window_reload",
  "web_window_evaluate",
  "response_send",
  "response_free",
  "web_window_register_handler",
  "web_window_remove_handler",
  "web_window_call_handler",
  "web_window_send",
  "web_window_reset_bridge",
  "web_window_send_held",
  "web_window_disable_alert_box_safety_timeout",
  "log_bridges",
} do
  popups[name] = library["zovkpopup_" .. name]
end

-- Raises an error for a status that is no success.
function popups.check(status)
  if status ~= popups.OK then error(ffi.string(popups.error_message(status)), 2) end
end

-- A struct with its size, such as popups.struct("settings", {application_id = "game"}).
-- It keeps no text of Lua's: keep those that are given as long as the struct is used.
function popups.struct(name, members)
  local struct = ffi.new("zovkpopup_" .. name, members or {})
  struct.size = ffi.sizeof(struct)
  return struct
end

return popups
