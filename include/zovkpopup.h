/// The C interface of ZOVKPopup: all that a game needs, for C and for languages that call C.
///
/// Threads. One thread is the main thread: the one that calls `zovkpopup_set_up`, or the first call
///   of another function where the game does without. Functions belong to it unless they say "any
///   thread". Callbacks come on it, from `zovkpopup_pump` or, where that is said, at once. A copy
///   of the process, made by fork, has no host: what it calls gives ZOVKPOPUP_ERROR_STATE.
/// Texts. UTF-8, ended by a zero. They are copied, so they need to last no longer than the call;
///   what a callback is given lasts until it returns. NULL is an absent text; where a text has to
///   be there, NULL is an error.
/// Values. What a page and the game tell each other is JSON text. NULL is no value at all, which is
///   not the same as "null".
/// Errors. A function that can fail gives a status: 0 is success. Each failure is told in the log,
///   too, in one line. Nothing is thrown, and nothing that a callback throws goes any further.
/// Ownership. Whoever is given a handle frees it, once, with the function named `…_free`; NULL is
///   freed without effect. A handle that was freed must not be used again.
/// User data. A callback is given the pointer that came with it. `destroy`, if there is one, is
///   called with that pointer exactly once, when the callback is not called any more, on the thread
///   that let it go: the main thread, unless it is said otherwise. That holds as well when the call
///   fails and when there is no callback.
/// Growth. Structs begin with their own size, as the game knows them: `x.size = sizeof x`, all else
///   zero. Members that the game does not know have their defaults, and those that the library does
///   not know are not looked at.
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
/// The same as one number: 10,000 × major + 100 × minor + patch.
#define ZOVKPOPUP_VERSION_NUMBER 10000

/// The version of the library that runs; it may be a newer one than the header's. Any thread.
ZOVKPOPUP_EXPORT const char* zovkpopup_version(void);
ZOVKPOPUP_EXPORT uint32_t zovkpopup_version_number(void);

// ---- Errors ----

typedef int32_t zovkpopup_status;
enum {
  ZOVKPOPUP_OK = 0,
  ZOVKPOPUP_ERROR_ARGUMENT = -1,  ///< NULL where something has to be, or a value without sense.
  ZOVKPOPUP_ERROR_SIZE = -2,      ///< A struct's `size` is that of no version.
  ZOVKPOPUP_ERROR_JSON = -3,      ///< A text is no JSON.
  ZOVKPOPUP_ERROR_STATE = -4,     ///< Not set up, shut down, set up before, closed, or answered.
  ZOVKPOPUP_ERROR_THREAD = -5,    ///< The call belongs to the main thread.
  ZOVKPOPUP_ERROR_MEMORY = -6,    ///< There was not enough memory.
  ZOVKPOPUP_ERROR_INTERNAL = -7   ///< Something else; the log says what.
};

/// What a status means, in English; never NULL, and not to be freed. Any thread.
ZOVKPOPUP_EXPORT const char* zovkpopup_error_message(zovkpopup_status status);

// ---- Callbacks ----

/// Lets the user data of a callback go.
typedef void (*zovkpopup_destroy)(void* user);
/// Tells that something has happened.
typedef void (*zovkpopup_event)(void* user);
/// Tells that something has happened, and why.
typedef void (*zovkpopup_text_event)(const char* text, void* user);
/// Takes one log line, without a line end. Called from any thread, also while other calls are under
/// way; it must not call the library.
typedef void (*zovkpopup_log)(const char* line, void* user);
/// How a request to show popups ended.
enum {
  ZOVKPOPUP_RESULT_ERROR = -1,  ///< Nothing was shown, or it could not be seen to its end.
  ZOVKPOPUP_RESULT_SKIP = 0,    ///< The player closed the popup, or nothing was left to show.
  ZOVKPOPUP_RESULT_COMMIT = 1,  ///< The player agreed.
  ZOVKPOPUP_RESULT_CANCEL = 2   ///< The player refused.
};

/// Hears how a request to show popups ended. `code` is a `ZOVKPOPUP_RESULT_…`; `message` is a JSON
/// text {"action":…,"msg":…} with what the page said, or a plain text, or empty; never NULL.
/// docs/integration.md has a table of all cases.
typedef void (*zovkpopup_complete)(int32_t code, const char* message, void* user);

// ---- Host ----

/// How one pixel lies in memory, byte by byte. What is written X is not looked at.
typedef enum zovkpopup_pixels {
  ZOVKPOPUP_PIXELS_BGRX = 0,  ///< Four bytes; SDL's ARGB8888 and XRGB8888.
  ZOVKPOPUP_PIXELS_RGBX = 1,  ///< Four bytes; what GL reads as GL_RGBA.
  ZOVKPOPUP_PIXELS_RGB = 2    ///< Three bytes.
} zovkpopup_pixels;

/// A frame of the game's, in memory of the game's.
typedef struct zovkpopup_picture {
  size_t size;         ///< Set by the library: members beyond it must not be written.
  const void* pixels;  ///< Of the row at the top; NULL, as it comes, for no picture.
  uint64_t width;      ///< In pixels; 16,384 at most.
  uint64_t height;     ///< The same.
  /// Bytes from one row to the one below it: 0 when rows follow one another without a gap, and less
  /// than 0 when the row at the top comes last, as GL reads them.
  int64_t stride;
  uint64_t format;  ///< One of `zovkpopup_pixels`.
} zovkpopup_picture;

/// Fills in the frame that the player saw last. The pixels are copied as soon as it has returned.
typedef void (*zovkpopup_backdrop)(zovkpopup_picture* picture, void* user);

/// What a game may say about itself. Every member but `size` has a default: zero.
typedef struct zovkpopup_settings {
  size_t size;
  /// Names the application's own data: letters, digits, dots, dashes, underscores. By default the
  /// program's name.
  const char* application_id;
  /// Where the game's resources lie (absolute path); by default the program's own directory.
  const char* resource_directory;
  /// The application's home directory (absolute path); by default `$XDG_DATA_HOME/<application
  /// id>`.
  const char* data_directory;
  /// The helper program `zovkpopup-helper`; by default the one installed with the library.
  const char* helper_path;
  /// The X11 window of the game, 0 when it has none.
  uint64_t native_window;
  /// A PEM file (absolute path) with certificate authorities to trust beside the system's.
  const char* certificate_authority;
  /// Takes the log lines instead of standard error, until the host is set up anew; so
  /// `log_destroy` may not be called before the process ends.
  zovkpopup_log log;
  void* log_user;
  zovkpopup_destroy log_destroy;
  /// How many megabytes (of 1,048,576 bytes) a page's process may take before it is ended and its
  /// page loaded again, 64 at least; by default 1024.
  uint64_t page_memory;
  /// How popups are drawn, in any case: "hardware", by the graphics processor; "software", without
  /// it; "plain", with the least memory, for pages that are opaque or stand still; "auto", the
  /// default, by the graphics processor where there is one; "look" is the same, but asks the
  /// graphics driver even where no device is seen. The player's environment variable
  /// `ZOVKPOPUP_DRAWING` goes before it.
  const char* drawing;
  /// The game's window as text: "x11:NUMBER", the same as `native_window`, or "wayland:HANDLE",
  /// what the compositor's `zxdg_exporter` gave for it. By default what `native_window` says.
  const char* game_window;
  /// The kind of window that popups have, in any case: "auto", the default, stands over the game's
  /// window wherever the display lets it; "fullscreen" takes the whole screen. The player's
  /// environment variable `ZOVKPOPUP_WINDOW` goes before it.
  const char* popup_window;
  /// Gives the game's last frame, for the displays on which a popup hides the game: it then lies
  /// beneath the page. Asked once when popups are about to cover the game and again after the popup
  /// has got another size, on the main thread; it must not call the library. On other displays it
  /// is never asked. Without it what is behind a page is plain and dark.
  zovkpopup_backdrop backdrop;
  void* backdrop_user;
  zovkpopup_destroy backdrop_destroy;
  /// How many seconds popups stay ready to come up at once when nothing is shown; by default 60.
  /// After that the helper gives up what it held ready for the next page, and ten minutes later it
  /// ends. The next popup brings it back, and so does a `zovkpopup_have_popup` that is true.
  uint64_t ready_seconds;
} zovkpopup_settings;

/// Call it once before anything else, and again only after `zovkpopup_shut_down`. NULL is all
/// defaults. ZOVKPOPUP_ERROR_STATE when it was called before, or the popups are already in use.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_set_up(const zovkpopup_settings* settings);

/// Runs what is due and returns; never waits. Call it once a frame. No task is begun after so many
/// microseconds, 2,000 say; what is left is run by the next call. Has no effect within a callback.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_pump(uint32_t budget_microseconds);

/// A file descriptor that is readable when `zovkpopup_pump` has something to do, for games with an
/// event loop; -1 when not set up. The library owns it, until `zovkpopup_shut_down`.
ZOVKPOPUP_EXPORT int zovkpopup_poll_descriptor(void);

/// Around the time in which popups cover the game. Every member but `size` may be NULL.
typedef struct zovkpopup_hooks {
  size_t size;
  zovkpopup_event popups_will_appear;    ///< Before the first popup comes on screen.
  zovkpopup_event popups_did_disappear;  ///< After the last one is gone.
  void* user;
  zovkpopup_destroy destroy;
} zovkpopup_hooks;

/// Sets the hooks in place of earlier ones. They stay until `zovkpopup_shut_down`.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_set_hooks(const zovkpopup_hooks* hooks);

/// Holds popups back, for a cut-scene or a match: requests wait, what is on screen stays.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_hold_popups(void);
/// Lets them go on, with what has waited first.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_release_popups(void);

/// Tells that the game's own window took the keyboard, or lost it. Not needed with `native_window`.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_game_window_did_become_key(void);
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_game_window_did_resign_key(void);

/// What a player asks of a popup with a game pad.
typedef enum zovkpopup_game_pad {
  ZOVKPOPUP_GAME_PAD_UP = 0,  ///< A direction moves the focus to what lies there.
  ZOVKPOPUP_GAME_PAD_DOWN = 1,
  ZOVKPOPUP_GAME_PAD_LEFT = 2,
  ZOVKPOPUP_GAME_PAD_RIGHT = 3,
  ZOVKPOPUP_GAME_PAD_PRESS = 4,  ///< Presses what has the focus.
  ZOVKPOPUP_GAME_PAD_LEAVE = 5   ///< Does what the escape key does.
} zovkpopup_game_pad;

/// Hands a press of a game pad, one of `zovkpopup_game_pad`, to the popup or web window in front;
/// nothing happens when there is none. The game reads its pads; what is held is not repeated. The
/// names are what is written on the player's buttons that press and leave, "A" and "B" where NULL:
/// a line at the foot of the popup shows them. ZOVKPOPUP_ERROR_ARGUMENT for a number that is none
/// of the above.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_game_pad_did_press(uint32_t press,
                                                               const char* press_name,
                                                               const char* leave_name);

/// Tells how large the game's own window is, in logical pixels: on Wayland once after
/// `zovkpopup_set_up` and whenever it changes. On X11 it is seen without.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_game_window_did_resize(int32_t width, int32_t height);

/// Ends everything within two seconds: an open popup closes, web windows close, and no callback is
/// called any more but `destroy`. May be called twice.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_shut_down(void);

// ---- Popups ----

/// Starts the popups: once per process, later calls are ignored. `base_url` is the address of the
/// popup service, without a trailing slash. NULL counts as empty; without a service the popups are
/// those that were shipped with the game and those of an earlier answer.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_start(const char* base_url, const char* game_id,
                                                  const char* game_key);

/// Tells who the player is; what is not known may be NULL. Any number of times.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_set_channel_id(int32_t channel_id, const char* open_id,
                                                           const char* token,
                                                           const char* jwt_token);

/// Whether a popup for this scene type would be shown now; false after an error, too.
ZOVKPOPUP_EXPORT bool zovkpopup_have_popup(uint64_t scene_type);

/// Shows the popup of a scene, or, when `scene` is NULL or empty, every valid popup of the scene
/// type, best first. Requests are shown one after another. `complete`, which may be NULL, is called
/// once at the most: at once, from within this call, when there is nothing to show and when the
/// call fails; not at all when a conditional popup commits with none behind it, and when the host
/// is shut down before. A request whose popup may not be shown after all, as its service does not
/// want it, or whose page commits without an address to report to, ends with 0 and "reatin
/// complete". Popups behind one that is cancelled are not shown.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_show_popup(const char* scene, uint64_t scene_type,
                                                       zovkpopup_complete complete, void* user,
                                                       zovkpopup_destroy destroy);

/// Shows the privacy policy if a newer one was published than the player last saw. Otherwise
/// `complete` is called at once with -1 and "".
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_show_policy(zovkpopup_complete complete, void* user,
                                                        zovkpopup_destroy destroy);

// ---- Why was this shown, or nothing? ----

typedef struct zovkpopup_explanation zovkpopup_explanation;

/// What the selection thinks of one popup. The texts belong to the explanation.
typedef struct zovkpopup_explained_popup {
  size_t size;
  const char* scene;
  const char* page;  ///< Name of the page file, or the address of a web page.
  /// "passed", or the first rule that the popup fails: "other_scene", "other_scene_type",
  /// "other_channel", "not_yet_valid", "expired", "file_missing", "already_shown",
  /// "digest_differs"; or "not_reached" when an earlier popup stands for the scene.
  const char* verdict;
  const char* wanted;    ///< What that rule asks for.
  const char* found;     ///< What it was compared with.
  const char* sentence;  ///< The same in plain English.
  uint64_t rank;         ///< When it would be shown: 1 is first. 0 is not at all.
  int64_t pop_id;
} zovkpopup_explained_popup;

/// Tells what `zovkpopup_show_popup` would select now, and why, without showing anything. Any
/// thread, and so with all functions of an explanation.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_explain(const char* scene, uint64_t scene_type,
                                                    zovkpopup_explanation** explanation);
/// How the whole request would go. NULL for NULL.
ZOVKPOPUP_EXPORT const char* zovkpopup_explanation_sentence(
    const zovkpopup_explanation* explanation);
/// How many popups were looked at. 0 for NULL.
ZOVKPOPUP_EXPORT size_t zovkpopup_explanation_popup_count(const zovkpopup_explanation* explanation);
/// Fills `popup`, of which the caller has set the size, with the one at `index`, from 0, in the
/// order in which they are looked at.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_explanation_popup(
    const zovkpopup_explanation* explanation, size_t index, zovkpopup_explained_popup* popup);
ZOVKPOPUP_EXPORT void zovkpopup_explanation_free(zovkpopup_explanation* explanation);

// ---- A web window of the game's own, with a page that talks with the game ----

typedef struct zovkpopup_web_window zovkpopup_web_window;

enum { ZOVKPOPUP_FRAME_NEW_WINDOW = 0, ZOVKPOPUP_FRAME_MAIN = 1, ZOVKPOPUP_FRAME_SUB = 2 };

/// Whether a page may navigate to an address, in one of the ZOVKPOPUP_FRAME_….
typedef bool (*zovkpopup_allow_navigation)(const char* address, int32_t frame, void* user);

/// What a web window shows, and who hears of it. Exactly one of `address` and `page_file` is given;
/// all else may be zero.
typedef struct zovkpopup_web_window_settings {
  size_t size;
  const char* address;    ///< An http or https address.
  const char* page_file;  ///< The absolute path of a page file, which can read no other file.
  /// Where the window stands on the screen, in logical pixels, where windows can be placed; the
  /// full screen when width and height are 0.
  double x, y, width, height;
  uint64_t see_through;  ///< 1 lets the game be seen where the page is clear.
  /// A page has taken the place of the one before; the first one has, too.
  zovkpopup_event page_changed;
  /// The window is gone because its helper program failed; said once, after it was closed.
  zovkpopup_text_event failed;
  /// Asked before each navigation that is not the bridge's own; without it, all are allowed.
  zovkpopup_allow_navigation allow_navigation;
  zovkpopup_event load_started;
  zovkpopup_event load_finished;
  zovkpopup_text_event load_failed;       ///< Told the error. Close the window, or offer a reload.
  zovkpopup_event page_process_ended;     ///< The page is loaded again.
  zovkpopup_text_event new_window_asked;  ///< Told the address. None is ever opened.
  void* user;
  zovkpopup_destroy destroy;
} zovkpopup_web_window_settings;

/// Opens a window and begins to load its page. `window` is set to NULL when that fails. Handlers
/// that are registered before the next pump miss nothing.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_open(
    const zovkpopup_web_window_settings* settings, zovkpopup_web_window** window);
/// Closes the window and lets its callbacks and handlers go; none is called any more, but those of
/// scripts under way. The handle stays. May be called twice, and within any of its callbacks.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_close(zovkpopup_web_window* window);
/// Closes the window if need be, and frees the handle; also after the host was shut down, and
/// within any of its callbacks.
ZOVKPOPUP_EXPORT void zovkpopup_web_window_free(zovkpopup_web_window* window);
/// False after it was closed, after a failure, and after the host was shut down.
ZOVKPOPUP_EXPORT bool zovkpopup_web_window_is_open(const zovkpopup_web_window* window);
/// Loads the page anew.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_reload(zovkpopup_web_window* window);

/// Hears the result of a script: exactly one of the two is not NULL.
typedef void (*zovkpopup_script_result)(const char* json, const char* error, void* user);

/// Runs a script in the page. `result`, which may be NULL, is called once unless the call fails or
/// the host is shut down before; with an error when the window closes before.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_evaluate(zovkpopup_web_window* window,
                                                                const char* script,
                                                                zovkpopup_script_result result,
                                                                void* user,
                                                                zovkpopup_destroy destroy);

// ---- The bridge of a web window ----
//
// These may be called from any thread, as long as the window is not freed meanwhile. Another thread
// than the main one waits until the main thread, in a pump, has handed its message over, so it must
// not hold what the main thread needs; and user data may be let go on it. In a window that is
// closed they give ZOVKPOPUP_ERROR_STATE.

/// The page's wish for an answer. It may be kept and answered later, from any thread, also after
/// the window was freed.
typedef struct zovkpopup_response zovkpopup_response;

/// A handler that the page may call. `json` is NULL when the page gave no data. The handler owns
/// `response`, which is never NULL, and has to free it, answered or not.
typedef void (*zovkpopup_handler)(const char* json, zovkpopup_response* response, void* user);
/// Hears the page's answer; `json` is NULL when it is none.
typedef void (*zovkpopup_answer)(const char* json, void* user);

/// Answers the page, with NULL for nothing. Once; the second time is ZOVKPOPUP_ERROR_STATE. After a
/// ZOVKPOPUP_ERROR_JSON it may be answered still. The answer to a page that is gone goes nowhere,
/// which is no error, and a page that wants no answer gets none. Any thread, one at a time.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_response_send(zovkpopup_response* response,
                                                          const char* json);
/// Any thread.
ZOVKPOPUP_EXPORT void zovkpopup_response_free(zovkpopup_response* response);

/// Lets the page call `handler`, in place of any earlier one of that name.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_register_handler(
    zovkpopup_web_window* window, const char* name, zovkpopup_handler handler, void* user,
    zovkpopup_destroy destroy);
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_remove_handler(zovkpopup_web_window* window,
                                                                      const char* name);
/// Calls a handler of the page. `json` may be NULL for no data, `answer` for no answer. `answer` is
/// called once at most, and kept until the page answers, is left, or the window closes.
ZOVKPOPUP_EXPORT zovkpopup_status
zovkpopup_web_window_call_handler(zovkpopup_web_window* window, const char* name, const char* json,
                                  zovkpopup_answer answer, void* user, zovkpopup_destroy destroy);
/// Sends data to no handler in particular; the page warns on its console that it has none for it.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_send(zovkpopup_web_window* window,
                                                            const char* json,
                                                            zovkpopup_answer answer, void* user,
                                                            zovkpopup_destroy destroy);
/// Forgets callbacks that wait for the page, and holds messages back until it asks for the bridge:
/// before a reload in which no message is to be lost.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_reset_bridge(zovkpopup_web_window* window);
/// Sends what was held back, without waiting for the page to ask.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_web_window_send_held(zovkpopup_web_window* window);
/// Tells the page to handle messages at once. Only for pages that open no dialogs.
ZOVKPOPUP_EXPORT zovkpopup_status
zovkpopup_web_window_disable_alert_box_safety_timeout(zovkpopup_web_window* window);
/// Writes the traffic of all bridges to the log, from now on, each message up to so many
/// characters; a number below 0 stands for all of them. Any thread.
ZOVKPOPUP_EXPORT zovkpopup_status zovkpopup_log_bridges(int32_t longest_message);

#ifdef __cplusplus
}
#endif

#endif
