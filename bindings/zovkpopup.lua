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
typedef struct zovkpopup_popup_event zovkpopup_popup_event;
typedef struct zovkpopup_hooks zovkpopup_hooks;
typedef struct zovkpopup_explained_popup zovkpopup_explained_popup;
typedef struct zovkpopup_web_window_settings zovkpopup_web_window_settings;
typedef void (*zovkpopup_destroy)(void *);
typedef void (*zovkpopup_event)(void *);
typedef void (*zovkpopup_text_event)(const char *, void *);
typedef void (*zovkpopup_log)(const char *, void *);
typedef void (*zovkpopup_complete)(int32_t, const char *, void *);
typedef void (*zovkpopup_backdrop)(zovkpopup_picture *, void *);
typedef void (*zovkpopup_popup_listener)(const zovkpopup_popup_event *, void *);
typedef bool (*zovkpopup_allow_navigation)(const char *, int32_t, void *);
typedef void (*zovkpopup_script_result)(const char *, const char *, void *);
typedef void (*zovkpopup_handler)(const char *, zovkpopup_response *, void *);
typedef void (*zovkpopup_answer)(const char *, void *);
// A frame of the game, in the game's memory.
struct zovkpopup_picture {
  size_t size;
  const void *pixels;
  uint64_t width;
  uint64_t height;
  int64_t stride;
  uint64_t format;
};
// The settings of a host. Every member except `size` may be zero, which selects its default.
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
// What has happened to one popup. The texts are never NULL, and valid until the callback returns.
struct zovkpopup_popup_event {
  size_t size;
  uint64_t kind;
  const char *scene;
  int32_t pop_id;
  int32_t result;
  const char *message;
  const char *reason;
  const char *sentence;
};
// Callbacks for the time in which popups cover the game, and for each popup. Every member except
// `size` may be NULL.
struct zovkpopup_hooks {
  size_t size;
  zovkpopup_event popups_will_appear;
  zovkpopup_event popups_did_disappear;
  void *user;
  zovkpopup_destroy destroy;
  zovkpopup_popup_listener popup_event;
};
// The verdict of the selection on one popup. The texts belong to the explanation.
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
// The contents and the callbacks of a web window. Set exactly one of `address` and `page_file`;
// everything else may be zero.
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
// Returns the version of the running library, which may be newer than this header. Any thread.
const char *zovkpopup_version(void);
// Returns the version of the running library as one number. Any thread.
uint32_t zovkpopup_version_number(void);
// Returns the meaning of a status in English; never NULL. Do not free it. Any thread.
const char *zovkpopup_error_message(zovkpopup_status status);
// Sets the host up. Call it before all other functions, and again only after
// `zovkpopup_shut_down`. NULL selects all defaults. Returns ZOVKPOPUP_ERROR_STATE if the host is
// already set up or popups are already in use.
zovkpopup_status zovkpopup_set_up(const zovkpopup_settings *settings);
// Runs the tasks that are due, and returns without waiting. Call it once a frame. After
// `budget_microseconds`, for example 2,000, no further task is begun; the next call runs the
// rest. Has no effect within a callback.
zovkpopup_status zovkpopup_pump(uint32_t budget_microseconds);
// Returns a file descriptor that is readable when `zovkpopup_pump` has something to do, for games
// with an event loop. Returns -1 if the host is not set up. The library owns the descriptor and
// closes it in `zovkpopup_shut_down`.
int zovkpopup_poll_descriptor(void);
// Sets the hooks and replaces earlier ones. They stay until `zovkpopup_shut_down`.
zovkpopup_status zovkpopup_set_hooks(const zovkpopup_hooks *hooks);
// Holds popups back, for example during a cut-scene or a match. New requests wait; a popup that
// is on screen stays.
zovkpopup_status zovkpopup_hold_popups(void);
// Ends holding back. Waiting requests are shown first.
zovkpopup_status zovkpopup_release_popups(void);
// Reports that the game's window took the keyboard. Not needed with `native_window`.
zovkpopup_status zovkpopup_game_window_did_become_key(void);
// Reports that the game's window lost the keyboard. Not needed with `native_window`.
zovkpopup_status zovkpopup_game_window_did_resign_key(void);
// Passes a press of a game pad, one of `zovkpopup_game_pad`, to the front popup or web window.
// Has no effect if there is none. The game reads its pads; the library does not repeat a press
// that is held. The names are the labels of the player's buttons for press and leave, "A" and "B"
// if NULL; a line at the foot of the popup shows them. Returns ZOVKPOPUP_ERROR_ARGUMENT for an
// unknown press.
zovkpopup_status zovkpopup_game_pad_did_press(uint32_t press, const char *press_name, const char *leave_name);
// Reports the size of the game's window in logical pixels. On Wayland, call it after
// `zovkpopup_set_up` and whenever the size changes. On X11 the library sees the size itself.
zovkpopup_status zovkpopup_game_window_did_resize(int32_t width, int32_t height);
// Ends everything within two seconds: popups and web windows close. No callback is called any
// more, except `destroy`. May be called twice.
zovkpopup_status zovkpopup_shut_down(void);
// Starts the popups. Only the first call in a process has an effect. `base_url` is the address of
// the popup service, without a trailing slash. NULL counts as empty. Without a service, the
// popups are those shipped with the game and those of an earlier answer.
zovkpopup_status zovkpopup_start(const char *base_url, const char *game_id, const char *game_key);
// Sets the player's identity. Unknown texts may be NULL. May be called any number of times.
zovkpopup_status zovkpopup_set_channel_id(int32_t channel_id, const char *open_id, const char *token, const char *jwt_token);
// Returns whether a popup for this scene type would be shown now; false also after an error.
bool zovkpopup_have_popup(uint64_t scene_type);
// Shows the popup of a scene or, if `scene` is NULL or empty, every valid popup of the scene
// type, best first. Requests are shown one after another. `complete` may be NULL. It is called at
// most once. It is called at once, from within this call, if there is nothing to show or the call
// fails. It is not called if a conditional popup commits with no popup behind it, or if the host
// is shut down first. The request ends with 0 and "reatin complete" if the service does not want
// its conditional popup after all, or if a page commits without an address to report to. After a
// cancel, the popups behind it are not shown.
zovkpopup_status zovkpopup_show_popup(const char *scene, uint64_t scene_type, zovkpopup_complete complete, void *user, zovkpopup_destroy destroy);
// Shows the privacy policy if a newer version was published than the one the player saw last.
// Otherwise `complete` is called at once with -1 and "".
zovkpopup_status zovkpopup_show_policy(zovkpopup_complete complete, void *user, zovkpopup_destroy destroy);
// Explains what `zovkpopup_show_popup` would select now, and why. Shows nothing. Any thread; the
// same holds for all functions of an explanation. The caller frees `*explanation`.
zovkpopup_status zovkpopup_explain(const char *scene, uint64_t scene_type, zovkpopup_explanation **explanation);
// Returns a sentence about the whole request. NULL for NULL.
const char *zovkpopup_explanation_sentence(const zovkpopup_explanation *explanation);
// Returns the number of popups that the selection examined. 0 for NULL.
size_t zovkpopup_explanation_popup_count(const zovkpopup_explanation *explanation);
// Fills `popup` with the popup at `index`, counted from 0, in the order of examination. Set
// `popup->size` before the call.
zovkpopup_status zovkpopup_explanation_popup(const zovkpopup_explanation *explanation, size_t index, zovkpopup_explained_popup *popup);
// Frees the explanation and its texts.
void zovkpopup_explanation_free(zovkpopup_explanation *explanation);
// Opens a window and begins to load its page. On failure `*window` is set to NULL. Handlers that
// are registered before the next pump miss no message.
zovkpopup_status zovkpopup_web_window_open(const zovkpopup_web_window_settings *settings, zovkpopup_web_window **window);
// Closes the window and releases its callbacks and handlers. None of them is called any more;
// only the results of scripts that still run are reported, as errors. The handle stays valid. May
// be called twice, and within any callback of the window.
zovkpopup_status zovkpopup_web_window_close(zovkpopup_web_window *window);
// Closes the window if it is open, and frees the handle. May be called after the host was shut
// down, and within any callback of the window.
void zovkpopup_web_window_free(zovkpopup_web_window *window);
// Returns false after the window was closed, after a failure, and after the host was shut down.
bool zovkpopup_web_window_is_open(const zovkpopup_web_window *window);
// Loads the page again.
zovkpopup_status zovkpopup_web_window_reload(zovkpopup_web_window *window);
// Runs a script in the page. `result` may be NULL. It is called once, with an error if the window
// closes first. It is not called if this call fails or the host is shut down first.
zovkpopup_status zovkpopup_web_window_evaluate(zovkpopup_web_window *window, const char *script, zovkpopup_script_result result, void *user, zovkpopup_destroy destroy);
// Answers the page; NULL answers without a value. Works once: a second call returns
// ZOVKPOPUP_ERROR_STATE. After ZOVKPOPUP_ERROR_JSON the handle can still answer. It is no error
// if the page is gone or wants no answer; the answer is then dropped. Any thread, one at a time.
zovkpopup_status zovkpopup_response_send(zovkpopup_response *response, const char *json);
// Frees the handle. Any thread.
void zovkpopup_response_free(zovkpopup_response *response);
// Registers a handler that the page may call by name. It replaces an earlier handler of that
// name.
zovkpopup_status zovkpopup_web_window_register_handler(zovkpopup_web_window *window, const char *name, zovkpopup_handler handler, void *user, zovkpopup_destroy destroy);
// Removes a handler.
zovkpopup_status zovkpopup_web_window_remove_handler(zovkpopup_web_window *window, const char *name);
// Calls a handler of the page. `json` may be NULL for no data, and `answer` NULL for no answer.
// `answer` is called at most once. It is kept until the page answers or is left, or the window
// closes.
zovkpopup_status zovkpopup_web_window_call_handler(zovkpopup_web_window *window, const char *name, const char *json, zovkpopup_answer answer, void *user, zovkpopup_destroy destroy);
// Sends data without naming a handler. The page warns on its console that it has no handler for
// it.
zovkpopup_status zovkpopup_web_window_send(zovkpopup_web_window *window, const char *json, zovkpopup_answer answer, void *user, zovkpopup_destroy destroy);
// Drops callbacks that wait for the page, and holds messages back until the page asks for the
// bridge. Call it before a reload that must not lose messages.
zovkpopup_status zovkpopup_web_window_reset_bridge(zovkpopup_web_window *window);
// Sends the messages that were held back, without waiting for the page to ask.
zovkpopup_status zovkpopup_web_window_send_held(zovkpopup_web_window *window);
// Makes the page handle messages at once. Use it only for pages that open no dialogs.
zovkpopup_status zovkpopup_web_window_disable_alert_box_safety_timeout(zovkpopup_web_window *window);
// Writes the traffic of all bridges to the log from now on. Each message is cut off after
// `longest_message` characters; a negative number means no limit. Any thread.
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
popups.EVENT_SHOWN = 0
popups.EVENT_ANSWERED = 1
popups.EVENT_NOT_SHOWN = 2
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
