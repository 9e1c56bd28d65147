/// The C interface of ZOVKPopup: everything a game needs, for C and for languages that call C.
///
/// Threads. The main thread is the one that calls `zovkpopup_set_up`, or that makes the first other
///   call in a game without it. Call every function on the main thread unless its comment says "any
///   thread". Callbacks come on the main thread, from `zovkpopup_pump` or, where a comment says so,
///   at once from within a call. A forked copy of the process has no host: its calls return
///   ZOVKPOPUP_ERROR_STATE.
/// Texts. All texts are UTF-8 and end with a zero byte. The library copies the texts it is given,
///   so they need to last only for the call. A text passed to a callback lasts until the callback
///   returns. NULL means no text; where a text is required, NULL is an error.
/// Values. A page and its game exchange JSON text. NULL means no value, which is not the same as
///   "null".
/// Errors. A function that can fail returns a status; 0 is success. Each failure also writes one
///   line to the log. No function throws, and an exception that a callback throws is caught.
/// Ownership. The caller owns every handle it gets, and frees it once with the function named
///   `…_free`. Freeing NULL has no effect. Do not use a handle after freeing it.
/// User data. Each callback gets the pointer that was passed with it. If `destroy` is given, it is
///   called with that pointer exactly once, after the last call of the callback, even if the
///   function failed and even if the callback is NULL. It runs on the thread that released the
///   callback: the main thread, unless a comment says otherwise.
/// Growth. Every struct begins with its size as the game knows it: set `x.size = sizeof x` and
///   everything else to zero. Members that the game does not know have their defaults. Members that
///   the library does not know are ignored.
#ifndef ZOVKPOPUP_H
#define ZOVKPOPUP_H

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define ZOVKPOPUP_EXPORT __attribute__((visibility("default")))
#else
#define ZOVKPOPUP_EXPORT
#endif

#ifdef __cplusplus
extern "C" {
#endif

// ---- Version ----

/// The version of this header.
#define ZOVKPOPUP_VERSION "1.0.0"
/// The version of this header as one number: 10,000 × major + 100 × minor + patch.
#define ZOVKPOPUP_VERSION_NUMBER 10000

/// Returns the version of the running library, which may be newer than this header. Any thread.
ZOVKPOPUP_EXPORT const char* zovkpopup_version(void);
/// Returns the version of the running library as one number. Any thread.
ZOVKPOPUP_EXPORT uint32_t zovkpopup_version_number(void);

// ---- Errors ----

typedef int32_t zovkpopup_status;
enum {
  ZOVKPOPUP_OK = 0,
  ZOVKPOPUP_ERROR_ARGUMENT = -1,  ///< An argument is NULL or not allowed.
  ZOVKPOPUP_ERROR_SIZE = -2,      ///< A struct's `size` fits no version of the struct.
  ZOVKPOPUP_ERROR_JSON = -3,      ///< A text is not JSON.
  ZOVKPOPUP_ERROR_STATE = -4,     ///< Not set up, already set up, shut down, closed, or answered.
  ZOVKPOPUP_ERROR_THREAD = -5,    ///< The function must be called on the main thread.
  ZOVKPOPUP_ERROR_MEMORY = -6,    ///< There was not enough memory.
  ZOVKPOPUP_ERROR_INTERNAL = -7   ///< Something else; the log says what.
};

/// Returns the meaning of a status in English; never NULL. Do not free it. Any thread.
ZOVKPOPUP_EXPORT const char* zovkpopup_error_message(zovkpopup_status status);

// ---- Callbacks ----

/// Releases the user data of a callback.
typedef void (*zovkpopup_destroy)(void* user);
/// Reports an event.
typedef void (*zovkpopup_event)(void* user);
/// Reports an event with a text, such as a reason or an address.
typedef void (*zovkpopup_text_event)(const char* text, void* user);
/// Receives one log line, without a line end. Called from any thread, also while other calls are
/// running. It must not call the library.
typedef void (*zovkpopup_log)(const char* line, void* user);
/// The ways in which a request to show popups can end.
enum {
  ZOVKPOPUP_RESULT_ERROR = -1,  ///< Nothing was shown, or a popup failed before it was answered.
  ZOVKPOPUP_RESULT_SKIP = 0,    ///< The player closed the popup, or nothing was left to show.
  ZOVKPOPUP_RESULT_COMMIT = 1,  ///< The player agreed.
  ZOVKPOPUP_RESULT_CANCEL = 2   ///< The player refused.
};

/// Receives the result of a request to show popups. `code` is a `ZOVKPOPUP_RESULT_…`. `message` is
/// a JSON text {"action":…,"msg":…} with the page's message, or a plain text, or empty; never NULL.
/// docs/integration.md has a table of all cases.
typedef void (*zovkpopup_complete)(int32_t code, const char* message, void* user);

// ---- Host ----

/// The byte order of one pixel in memory. The byte named X is ignored.
typedef enum zovkpopup_pixels {
  ZOVKPOPUP_PIXELS_BGRX = 0,  ///< Four bytes; SDL's ARGB8888 and XRGB8888.
  ZOVKPOPUP_PIXELS_RGBX = 1,  ///< Four bytes; what GL reads as GL_RGBA.
  ZOVKPOPUP_PIXELS_RGB = 2    ///< Three bytes.
} zovkpopup_pixels;

/// A frame of the game, in the game's memory.
typedef struct zovkpopup_picture {
  size_t size;         ///< Set by the library: do not write members beyond it.
  const void* pixels;  ///< The start of the top row; NULL, the initial value, for no picture.
  uint64_t width;      ///< In pixels, at most 16,384.
  uint64_t height;     ///< In pixels, at most 16,384.
  /// The number of bytes from one row to the row below. 0 means that the rows follow each other
  /// without a gap. A negative number means that the top row is the last one in memory, as GL reads
  /// them.
  int64_t stride;
  uint64_t format;  ///< One of `zovkpopup_pixels`.
} zovkpopup_picture;

/// Fills in the last frame that the player saw. The library copies the pixels as soon as the
/// callback has returned.
typedef void (*zovkpopup_backdrop)(zovkpopup_picture* picture, void* user);

/// The settings of a host. Every member except `size` may be zero, which selects its default.
typedef struct zovkpopup_settings {
  size_t size;
  /// The name of the folder for the application's data: letters, digits, dots, dashes, underscores.
  /// Default: the program's name.
  const char* application_id;
  /// The directory of the game's resources (absolute path). Default: the program's directory.
  const char* resource_directory;
  /// The application's home directory (absolute path). Default: `$XDG_DATA_HOME/<application id>`.
  const char* data_directory;
  /// The path of the helper program `zovkpopup-helper`. Default: the one installed with the
  /// library.
  const char* helper_path;
  /// The X11 window of the game, or 0 if it has none.
  uint64_t native_window;
  /// A PEM file (absolute path) with certificate authorities to trust in addition to the system's.
  const char* certificate_authority;
  /// Receives the log lines, which otherwise go to standard error. It is used until the host is set
  /// up again, so `log_destroy` may not be called before the process ends.
  zovkpopup_log log;
  void* log_user;
  zovkpopup_destroy log_destroy;
  /// The memory limit of a page's process, in megabytes of 1,048,576 bytes, at least 64. A process
  /// beyond the limit is ended and its page loaded again. Default: 1024.
  uint64_t page_memory;
  /// How popups are drawn. "hardware" uses the graphics processor, "software" does not. "plain"
  /// uses the least memory, for pages that are opaque or do not move. "auto", the default, uses the
  /// graphics processor if there is one. "look" does the same, but asks the graphics driver even if
  /// no device is found. Upper and lower case are the same. The environment variable
  /// `ZOVKPOPUP_DRAWING` overrides this setting.
  const char* drawing;
  /// The game's window as text: "x11:NUMBER", with the number that `native_window` takes, or
  /// "wayland:HANDLE", with the handle from the compositor's `zxdg_exporter`. Default: the window
  /// in `native_window`.
  const char* game_window;
  /// The kind of popup window. "auto", the default, stands over the game's window if the display
  /// allows it. "fullscreen" takes the whole screen. Upper and lower case are the same. The
  /// environment variable `ZOVKPOPUP_WINDOW` overrides this setting.
  const char* popup_window;
  /// Provides the game's last frame for displays on which a popup hides the game: the frame is then
  /// drawn beneath the page. Without it, the ground behind the page is plain and dark there. Called
  /// on the main thread when popups are about to cover the game, and again after the popup's size
  /// has changed; never on displays that show the game. It must not call the library.
  zovkpopup_backdrop backdrop;
  void* backdrop_user;
  zovkpopup_destroy backdrop_destroy;
  /// How many seconds popups stay ready to appear at once when nothing is shown. Default: 60. After
  /// that the helper gives way to one with hardly any memory, and ten minutes later that one ends.
  /// The next popup makes one ready again, and so does a `zovkpopup_have_popup` that returns true.
  uint64_t ready_seconds;
} zovkpopup_settings;

/// Sets the host up. Call it before all other functions, and again only after
/// `zovkpopup_shut_down`. NULL selects all defaults. Returns ZOVKPOPUP_ERROR_STATE if the host is
/// already set up or popups are already in use.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_set_up(const zovkpopup_settings* settings);

/// Runs the tasks that are due, and returns without waiting. Call it once a frame. After
/// `budget_microseconds`, for example 2,000, no further task is begun; the next call runs the rest.
/// Has no effect within a callback.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_pump(uint32_t budget_microseconds);

/// Returns a file descriptor that is readable when `zovkpopup_pump` has something to do, for games
/// with an event loop. Returns -1 if the host is not set up. The library owns the descriptor and
/// closes it in `zovkpopup_shut_down`.
ZOVKPOPUP_EXPORT int zovkpopup_poll_descriptor(void);

/// The kind of a `zovkpopup_popup_event`.
typedef enum zovkpopup_event_kind {
  ZOVKPOPUP_EVENT_SHOWN = 0,     ///< Its page has loaded, on screen.
  ZOVKPOPUP_EVENT_ANSWERED = 1,  ///< The player answered or closed it.
  ZOVKPOPUP_EVENT_NOT_SHOWN = 2  ///< It was not shown, or not until an answer.
} zovkpopup_event_kind;

/// What has happened to one popup. The texts are never NULL, and valid until the callback returns.
typedef struct zovkpopup_popup_event {
  size_t size;          ///< Set by the library. Members beyond this size do not exist.
  uint64_t kind;        ///< One of `zovkpopup_event_kind`.
  const char* scene;    ///< The popup's scene; the scene of the request if there is no popup.
  int32_t pop_id;       ///< 0 if there is no popup.
  int32_t result;       ///< If answered: a `ZOVKPOPUP_RESULT_…`. Else ZOVKPOPUP_RESULT_ERROR.
  const char* message;  ///< If answered: JSON {"action":…,"msg":…}. Else empty.
  /// If not shown: the reason in one word. Else empty. It is a verdict of
  /// `zovkpopup_explained_popup`, or one of these: "no_popup" if no popup is defined for the
  /// request; "policy_not_needed"; "condition_refused" and "condition_failed" if the service of a
  /// conditional popup refused it or gave no answer; "page_failed" if the page did not load;
  /// "display_failed" if popups cannot be displayed; "request_ended" if the request ended before
  /// its turn; "skipped_over" if an answer to the popup before it came late or twice and ended its
  /// turn; "report_missing" if the page committed and the popup has no address to report to.
  const char* reason;
  const char* sentence;  ///< The reason in plain English. Else empty.
} zovkpopup_popup_event;

/// Receives what has happened to one popup.
typedef void (*zovkpopup_popup_listener)(const zovkpopup_popup_event* event, void* user);

/// Callbacks for the time in which popups cover the game, and for each popup. Every member except
/// `size` may be NULL.
typedef struct zovkpopup_hooks {
  size_t size;
  zovkpopup_event popups_will_appear;    ///< Called before the first popup comes on screen.
  zovkpopup_event popups_did_disappear;  ///< Called after the last popup is gone.
  void* user;
  zovkpopup_destroy destroy;
  /// Called for each popup of a request that was shown, answered, or not shown; not for popups that
  /// a shut-down ends. Always called from `zovkpopup_pump`, in the order of the events. The result
  /// of a request comes before the event of the same answer.
  zovkpopup_popup_listener popup_event;
} zovkpopup_hooks;

/// Sets the hooks and replaces earlier ones. They stay until `zovkpopup_shut_down`.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_set_hooks(const zovkpopup_hooks* hooks);

/// Holds popups back, for example during a cut-scene or a match. New requests wait; a popup that is
/// on screen stays.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_hold_popups(void);
/// Ends holding back. Waiting requests are shown first.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_release_popups(void);

/// Reports that the game's window took the keyboard. Not needed with `native_window`.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_game_window_did_become_key(void);
/// Reports that the game's window lost the keyboard. Not needed with `native_window`.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_game_window_did_resign_key(void);

/// The meaning of a press on a game pad.
typedef enum zovkpopup_game_pad {
  ZOVKPOPUP_GAME_PAD_UP = 0,  ///< A direction moves the focus to the next place there.
  ZOVKPOPUP_GAME_PAD_DOWN = 1,
  ZOVKPOPUP_GAME_PAD_LEFT = 2,
  ZOVKPOPUP_GAME_PAD_RIGHT = 3,
  ZOVKPOPUP_GAME_PAD_PRESS = 4,  ///< Presses the element that has the focus.
  ZOVKPOPUP_GAME_PAD_LEAVE = 5   ///< Does what the escape key does.
} zovkpopup_game_pad;

/// Passes a press of a game pad, one of `zovkpopup_game_pad`, to the front popup or web window. Has
/// no effect if there is none. The game reads its pads; the library does not repeat a press that is
/// held. The names are the labels of the player's buttons for press and leave, "A" and "B" if NULL;
/// a line at the foot of the popup shows them. Returns ZOVKPOPUP_ERROR_ARGUMENT for an unknown
/// press.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_game_pad_did_press(uint32_t press,
                                                               const char* press_name,
                                                               const char* leave_name);

/// Reports the size of the game's window in logical pixels. On Wayland, call it after
/// `zovkpopup_set_up` and whenever the size changes. On X11 the library sees the size itself.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_game_window_did_resize(int32_t width, int32_t height);

/// Ends everything within two seconds: popups and web windows close. No callback is called any
/// more, except `destroy`. May be called twice.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_shut_down(void);

// ---- Popups ----

/// Starts the popups. Only the first call in a process has an effect. `base_url` is the address of
/// the popup service, without a trailing slash. NULL counts as empty. Without a service, the popups
/// are those shipped with the game and those of an earlier answer.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_start(const char* base_url, const char* game_id,
                                                  const char* game_key);

/// Sets the player's identity. Unknown texts may be NULL. May be called any number of times.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_set_channel_id(int32_t channel_id, const char* open_id,
                                                           const char* token,
                                                           const char* jwt_token);

/// Returns whether a popup for this scene type would be shown now; false also after an error.
ZOVKPOPUP_EXPORT bool zovkpopup_have_popup(uint64_t scene_type);

/// Shows the popup of a scene or, if `scene` is NULL or empty, every valid popup of the scene type,
/// best first. Requests are shown one after another.
///
/// `complete` may be NULL. It is called at most once. It is called at once, from within this call,
/// if there is nothing to show or the call fails. It is not called if a conditional popup commits
/// with no popup behind it, or if the host is shut down first. The request ends with 0 and "reatin
/// complete" if the service does not want its conditional popup after all, or if a page commits
/// without an address to report to. After a cancel, the popups behind it are not shown.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_show_popup(const char* scene, uint64_t scene_type,
                                                       zovkpopup_complete complete, void* user,
                                                       zovkpopup_destroy destroy);

/// Shows the privacy policy if a newer version was published than the one the player saw last.
/// Otherwise `complete` is called at once with -1 and "".
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_show_policy(zovkpopup_complete complete, void* user,
                                                        zovkpopup_destroy destroy);

// ---- Why was this shown, or nothing? ----

typedef struct zovkpopup_explanation zovkpopup_explanation;

/// The verdict of the selection on one popup. The texts belong to the explanation.
typedef struct zovkpopup_explained_popup {
  size_t size;
  const char* scene;
  const char* page;  ///< The name of the page file, or the address of the web page.
  /// "passed", or the first rule that the popup fails: "other_scene", "other_scene_type",
  /// "other_channel", "not_yet_valid", "expired", "file_missing", "already_shown",
  /// "digest_differs"; or "not_reached" if an earlier popup was chosen for the scene.
  const char* verdict;
  const char* wanted;    ///< The value that the rule requires.
  const char* found;     ///< The value that it was compared with.
  const char* sentence;  ///< The verdict in plain English.
  uint64_t rank;         ///< The place in the order of showing: 1 is first, 0 means not shown.
  int64_t pop_id;
} zovkpopup_explained_popup;

/// Explains what `zovkpopup_show_popup` would select now, and why. Shows nothing. Any thread; the
/// same holds for all functions of an explanation. The caller frees `*explanation`.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_explain(const char* scene, uint64_t scene_type,
                                                    zovkpopup_explanation** explanation);
/// Returns a sentence about the whole request. NULL for NULL.
ZOVKPOPUP_EXPORT const char* zovkpopup_explanation_sentence(
    const zovkpopup_explanation* explanation);
/// Returns the number of popups that the selection examined. 0 for NULL.
ZOVKPOPUP_EXPORT size_t zovkpopup_explanation_popup_count(const zovkpopup_explanation* explanation);
/// Fills `popup` with the popup at `index`, counted from 0, in the order of examination. Set
/// `popup->size` before the call.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_explanation_popup(
    const zovkpopup_explanation* explanation, size_t index, zovkpopup_explained_popup* popup);
/// Frees the explanation and its texts.
ZOVKPOPUP_EXPORT void zovkpopup_explanation_free(zovkpopup_explanation* explanation);

// ---- A web window of the game's own, with a page that talks with the game ----

typedef struct zovkpopup_web_window zovkpopup_web_window;

enum { ZOVKPOPUP_FRAME_NEW_WINDOW = 0, ZOVKPOPUP_FRAME_MAIN = 1, ZOVKPOPUP_FRAME_SUB = 2 };

/// Returns whether a page may navigate to an address. `frame` is one of ZOVKPOPUP_FRAME_….
typedef bool (*zovkpopup_allow_navigation)(const char* address, int32_t frame, void* user);

/// The contents and the callbacks of a web window. Set exactly one of `address` and `page_file`;
/// everything else may be zero.
typedef struct zovkpopup_web_window_settings {
  size_t size;
  const char* address;    ///< An http or https address.
  const char* page_file;  ///< The absolute path of a page file. It can read no other file.
  /// The window's place on the screen in logical pixels, on displays where windows can be placed.
  /// Width and height 0 mean the full screen.
  double x, y, width, height;
  uint64_t see_through;  ///< 1 shows the game where the page is clear.
  /// Called when a page has replaced the one before, and for the first page.
  zovkpopup_event page_changed;
  /// Called once, after the window was closed because its helper program failed.
  zovkpopup_text_event failed;
  /// Called before each navigation except the bridge's own. NULL allows all navigations.
  zovkpopup_allow_navigation allow_navigation;
  zovkpopup_event load_started;
  zovkpopup_event load_finished;
  zovkpopup_text_event load_failed;       ///< Gets the error. Close the window or offer a reload.
  zovkpopup_event page_process_ended;     ///< The page is being loaded again.
  zovkpopup_text_event new_window_asked;  ///< Gets the address. None is ever opened.
  void* user;
  zovkpopup_destroy destroy;
} zovkpopup_web_window_settings;

/// Opens a window and begins to load its page. On failure `*window` is set to NULL. Handlers that
/// are registered before the next pump miss no message.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_open(
    const zovkpopup_web_window_settings* settings, zovkpopup_web_window** window);
/// Closes the window and releases its callbacks and handlers. None of them is called any more; only
/// the results of scripts that still run are reported, as errors. The handle stays valid. May be
/// called twice, and within any callback of the window.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_close(zovkpopup_web_window* window);
/// Closes the window if it is open, and frees the handle. May be called after the host was shut
/// down, and within any callback of the window.
ZOVKPOPUP_EXPORT void zovkpopup_web_window_free(zovkpopup_web_window* window);
/// Returns false after the window was closed, after a failure, and after the host was shut down.
ZOVKPOPUP_EXPORT bool zovkpopup_web_window_is_open(const zovkpopup_web_window* window);
/// Loads the page again.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_reload(zovkpopup_web_window* window);

/// Receives the result of a script: exactly one of `json` and `error` is not NULL.
typedef void (*zovkpopup_script_result)(const char* json, const char* error, void* user);

/// Runs a script in the page. `result` may be NULL. It is called once, with an error if the window
/// closes first. It is not called if this call fails or the host is shut down first.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_evaluate(zovkpopup_web_window* window,
                                                                const char* script,
                                                                zovkpopup_script_result result,
                                                                void* user,
                                                                zovkpopup_destroy destroy);

// ---- The bridge of a web window ----
//
// Any thread may call these functions, as long as the window is not freed meanwhile. A thread other
// than the main thread waits until the main thread, in a pump, has passed its message on; so it
// must not hold anything that the main thread needs. User data may be released on the calling
// thread. In a closed window these functions return ZOVKPOPUP_ERROR_STATE.

/// The handle for answering a call from the page. It may be kept and used later, from any thread,
/// even after the window was freed.
typedef struct zovkpopup_response zovkpopup_response;

/// Handles a call from the page. `json` is NULL if the page gave no data. `response` is never NULL.
/// The handler owns it and must free it, whether it answers or not.
typedef void (*zovkpopup_handler)(const char* json, zovkpopup_response* response, void* user);
/// Receives the page's answer; `json` is NULL if it has no value.
typedef void (*zovkpopup_answer)(const char* json, void* user);

/// Answers the page; NULL answers without a value. Works once: a second call returns
/// ZOVKPOPUP_ERROR_STATE. After ZOVKPOPUP_ERROR_JSON the handle can still answer. It is no error if
/// the page is gone or wants no answer; the answer is then dropped. Any thread, one at a time.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_response_send(zovkpopup_response* response,
                                                          const char* json);
/// Frees the handle. Any thread.
ZOVKPOPUP_EXPORT void zovkpopup_response_free(zovkpopup_response* response);

/// Registers a handler that the page may call by name. It replaces an earlier handler of that name.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_register_handler(
    zovkpopup_web_window* window, const char* name, zovkpopup_handler handler, void* user,
    zovkpopup_destroy destroy);
/// Removes a handler.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_remove_handler(zovkpopup_web_window* window,
                                                                      const char* name);
/// Calls a handler of the page. `json` may be NULL for no data, and `answer` NULL for no answer.
/// `answer` is called at most once. It is kept until the page answers or is left, or the window
/// closes.
ZOVKPOPUP_EXPORT zovkpopup_status
zovkpopup_web_window_call_handler(zovkpopup_web_window* window, const char* name, const char* json,
                                  zovkpopup_answer answer, void* user, zovkpopup_destroy destroy);
/// Sends data without naming a handler. The page warns on its console that it has no handler for
/// it.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_send(zovkpopup_web_window* window,
                                                            const char* json,
                                                            zovkpopup_answer answer, void* user,
                                                            zovkpopup_destroy destroy);
/// Drops callbacks that wait for the page, and holds messages back until the page asks for the
/// bridge. Call it before a reload that must not lose messages.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_reset_bridge(zovkpopup_web_window* window);
/// Sends the messages that were held back, without waiting for the page to ask.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_send_held(zovkpopup_web_window* window);
/// Makes the page handle messages at once. Use it only for pages that open no dialogs.
ZOVKPOPUP_EXPORT zovkpopup_status
zovkpopup_web_window_disable_alert_box_safety_timeout(zovkpopup_web_window* window);
/// Writes the traffic of all bridges to the log from now on. Each message is cut off after
/// `longest_message` characters; a negative number means no limit. Any thread.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_log_bridges(int32_t longest_message);

#ifdef __cplusplus
}
#endif

#endif
