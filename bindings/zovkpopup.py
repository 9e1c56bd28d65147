"""ZOVKPopup for Python, by ctypes. Made from zovkpopup.h by bindings/generate.py.

Texts are str and become UTF-8; in structs and callbacks they are bytes. Wrap functions that the
library calls in the type of their callback, such as `@Complete`, and keep them as long as they may
be called. One thread makes all calls. `check` turns every status but success into an Error.
The environment variable ZOVKPOPUP_LIBRARY names another file than libzovkpopup.so.1."""
import os
from ctypes import (CDLL, CFUNCTYPE, POINTER, Structure, byref, c_bool, c_char_p, c_double, c_int,
                    c_int32, c_int64, c_size_t, c_uint32, c_uint64, c_void_p, sizeof)
from typing import Any, Optional

_library = CDLL(os.environ.get("ZOVKPOPUP_LIBRARY", "libzovkpopup.so.1"))


class Error(Exception):
    """A call that failed; `status` says why."""

    def __init__(self, status: int) -> None:
        super().__init__(error_message(status))
        self.status = status


def check(status: int) -> None:
    """Raises Error unless the status is success."""
    if status != OK:
        raise Error(status)


def _bytes(text: Optional[str]) -> Optional[bytes]:
    return None if text is None else text.encode()


def _text(value: Optional[bytes]) -> Optional[str]:
    return None if value is None else value.decode()


OK = 0
ERROR_ARGUMENT = -1  # An argument is NULL or not allowed.
ERROR_SIZE = -2  # A struct's `size` fits no version of the struct.
ERROR_JSON = -3  # A text is not JSON.
ERROR_STATE = -4  # Not set up, already set up, shut down, closed, or answered.
ERROR_THREAD = -5  # The function must be called on the main thread.
ERROR_MEMORY = -6  # There was not enough memory.
ERROR_INTERNAL = -7  # Something else; the log says what.
RESULT_ERROR = -1  # Nothing was shown, or a popup failed before it was answered.
RESULT_SKIP = 0  # The player closed the popup, or nothing was left to show.
RESULT_COMMIT = 1  # The player agreed.
RESULT_CANCEL = 2  # The player refused.
PIXELS_BGRX = 0  # Four bytes; SDL's ARGB8888 and XRGB8888.
PIXELS_RGBX = 1  # Four bytes; what GL reads as GL_RGBA.
PIXELS_RGB = 2  # Three bytes.
EVENT_SHOWN = 0  # Its page has loaded, on screen.
EVENT_ANSWERED = 1  # The player answered or closed it.
EVENT_NOT_SHOWN = 2  # It was not shown, or not until an answer.
GAME_PAD_UP = 0  # A direction moves the focus to the next place there.
GAME_PAD_DOWN = 1
GAME_PAD_LEFT = 2
GAME_PAD_RIGHT = 3
GAME_PAD_PRESS = 4  # Presses the element that has the focus.
GAME_PAD_LEAVE = 5  # Does what the escape key does.
FRAME_NEW_WINDOW = 0
FRAME_MAIN = 1
FRAME_SUB = 2


class Picture(Structure):
    """A frame of the game, in the game's memory."""
    _fields_ = [
        ("size", c_size_t),  # Set by the library: do not write members beyond it.
        ("pixels", c_void_p),
        ("width", c_uint64),  # In pixels, at most 16,384.
        ("height", c_uint64),  # In pixels, at most 16,384.
        ("stride", c_int64),
        ("format", c_uint64),  # One of `zovkpopup_pixels`.
    ]

    def __init__(self, **members: Any) -> None:
        super().__init__(size=sizeof(type(self)), **members)



class PopupEvent(Structure):
    """What has happened to one popup. The texts are never NULL, and valid until the callback
    returns."""
    _fields_ = [
        ("size", c_size_t),  # Set by the library. Members beyond this size do not exist.
        ("kind", c_uint64),  # One of `zovkpopup_event_kind`.
        ("scene", c_char_p),
        ("pop_id", c_int32),  # 0 if there is no popup.
        ("result", c_int32),
        ("message", c_char_p),  # If answered: JSON {"action":…,"msg":…}. Else empty.
        ("reason", c_char_p),
        ("sentence", c_char_p),  # The reason in plain English. Else empty.
    ]

    def __init__(self, **members: Any) -> None:
        super().__init__(size=sizeof(type(self)), **members)


# Releases the user data of a callback.
Destroy = CFUNCTYPE(None, c_void_p)
# Reports an event.
Event = CFUNCTYPE(None, c_void_p)
# Reports an event with a text, such as a reason or an address.
TextEvent = CFUNCTYPE(None, c_char_p, c_void_p)
# Receives one log line, without a line end. Called from any thread, also while other calls are
# running. It must not call the library.
Log = CFUNCTYPE(None, c_char_p, c_void_p)
# Receives the result of a request to show popups. `code` is a `ZOVKPOPUP_RESULT_…`. `message` is
# a JSON text {"action":…,"msg":…} with the page's message, or a plain text, or empty; never NULL.
# docs/integration.md has a table of all cases.
Complete = CFUNCTYPE(None, c_int32, c_char_p, c_void_p)
# Fills in the last frame that the player saw. The library copies the pixels as soon as the
# callback has returned.
Backdrop = CFUNCTYPE(None, POINTER(Picture), c_void_p)
# Receives what has happened to one popup.
PopupListener = CFUNCTYPE(None, POINTER(PopupEvent), c_void_p)
# Returns whether a page may navigate to an address. `frame` is one of ZOVKPOPUP_FRAME_….
AllowNavigation = CFUNCTYPE(c_bool, c_char_p, c_int32, c_void_p)
# Receives the result of a script: exactly one of `json` and `error` is not NULL.
ScriptResult = CFUNCTYPE(None, c_char_p, c_char_p, c_void_p)
# Handles a call from the page. `json` is NULL if the page gave no data. `response` is never NULL.
# The handler owns it and must free it, whether it answers or not.
Handler = CFUNCTYPE(None, c_char_p, c_void_p, c_void_p)
# Receives the page's answer; `json` is NULL if it has no value.
Answer = CFUNCTYPE(None, c_char_p, c_void_p)


class Settings(Structure):
    """The settings of a host. Every member except `size` may be zero, which selects its
    default."""
    _fields_ = [
        ("size", c_size_t),
        ("application_id", c_char_p),
        ("resource_directory", c_char_p),
        ("data_directory", c_char_p),
        ("helper_path", c_char_p),
        ("native_window", c_uint64),  # The X11 window of the game, or 0 if it has none.
        ("certificate_authority", c_char_p),
        ("log", Log),
        ("log_user", c_void_p),
        ("log_destroy", Destroy),
        ("page_memory", c_uint64),
        ("drawing", c_char_p),
        ("game_window", c_char_p),
        ("popup_window", c_char_p),
        ("backdrop", Backdrop),
        ("backdrop_user", c_void_p),
        ("backdrop_destroy", Destroy),
        ("ready_seconds", c_uint64),
    ]

    def __init__(self, **members: Any) -> None:
        super().__init__(size=sizeof(type(self)), **members)



class Hooks(Structure):
    """Callbacks for the time in which popups cover the game, and for each popup. Every member
    except `size` may be NULL."""
    _fields_ = [
        ("size", c_size_t),
        ("popups_will_appear", Event),  # Called before the first popup comes on screen.
        ("popups_did_disappear", Event),  # Called after the last popup is gone.
        ("user", c_void_p),
        ("destroy", Destroy),
        ("popup_event", PopupListener),
    ]

    def __init__(self, **members: Any) -> None:
        super().__init__(size=sizeof(type(self)), **members)



class ExplainedPopup(Structure):
    """The verdict of the selection on one popup. The texts belong to the explanation."""
    _fields_ = [
        ("size", c_size_t),
        ("scene", c_char_p),
        ("page", c_char_p),  # The name of the page file, or the address of the web page.
        ("verdict", c_char_p),
        ("wanted", c_char_p),  # The value that the rule requires.
        ("found", c_char_p),  # The value that it was compared with.
        ("sentence", c_char_p),  # The verdict in plain English.
        ("rank", c_uint64),
        ("pop_id", c_int64),
    ]

    def __init__(self, **members: Any) -> None:
        super().__init__(size=sizeof(type(self)), **members)



class WebWindowSettings(Structure):
    """The contents and the callbacks of a web window. Set exactly one of `address` and
    `page_file`; everything else may be zero."""
    _fields_ = [
        ("size", c_size_t),
        ("address", c_char_p),  # An http or https address.
        ("page_file", c_char_p),
        ("x", c_double),
        ("y", c_double),
        ("width", c_double),
        ("height", c_double),
        ("see_through", c_uint64),  # 1 shows the game where the page is clear.
        ("page_changed", Event),
        ("failed", TextEvent),
        ("allow_navigation", AllowNavigation),
        ("load_started", Event),
        ("load_finished", Event),
        ("load_failed", TextEvent),  # Gets the error. Close the window or offer a reload.
        ("page_process_ended", Event),  # The page is being loaded again.
        ("new_window_asked", TextEvent),  # Gets the address. None is ever opened.
        ("user", c_void_p),
        ("destroy", Destroy),
    ]

    def __init__(self, **members: Any) -> None:
        super().__init__(size=sizeof(type(self)), **members)


_library.zovkpopup_version.argtypes = []
_library.zovkpopup_version.restype = c_char_p


def version() -> Optional[str]:
    """Returns the version of the running library, which may be newer than this header. Any
    thread."""
    return _text(_library.zovkpopup_version())


_library.zovkpopup_version_number.argtypes = []
_library.zovkpopup_version_number.restype = c_uint32


def version_number() -> int:
    """Returns the version of the running library as one number. Any thread."""
    return _library.zovkpopup_version_number()


_library.zovkpopup_error_message.argtypes = [c_int32]
_library.zovkpopup_error_message.restype = c_char_p


def error_message(status: int) -> Optional[str]:
    """Returns the meaning of a status in English; never NULL. Do not free it. Any thread."""
    return _text(_library.zovkpopup_error_message(status))


_library.zovkpopup_set_up.argtypes = [POINTER(Settings)]
_library.zovkpopup_set_up.restype = c_int32


def set_up(settings: Optional[Settings]) -> int:
    """Sets the host up. Call it before all other functions, and again only after
    `zovkpopup_shut_down`. NULL selects all defaults. Returns ZOVKPOPUP_ERROR_STATE if the host is
    already set up or popups are already in use."""
    return _library.zovkpopup_set_up(None if settings is None else byref(settings))


_library.zovkpopup_pump.argtypes = [c_uint32]
_library.zovkpopup_pump.restype = c_int32


def pump(budget_microseconds: int) -> int:
    """Runs the tasks that are due, and returns without waiting. Call it once a frame. After
    `budget_microseconds`, for example 2,000, no further task is begun; the next call runs the
    rest. Has no effect within a callback."""
    return _library.zovkpopup_pump(budget_microseconds)


_library.zovkpopup_poll_descriptor.argtypes = []
_library.zovkpopup_poll_descriptor.restype = c_int


def poll_descriptor() -> int:
    """Returns a file descriptor that is readable when `zovkpopup_pump` has something to do, for
    games with an event loop. Returns -1 if the host is not set up. The library owns the
    descriptor and closes it in `zovkpopup_shut_down`."""
    return _library.zovkpopup_poll_descriptor()


_library.zovkpopup_set_hooks.argtypes = [POINTER(Hooks)]
_library.zovkpopup_set_hooks.restype = c_int32


def set_hooks(hooks: Optional[Hooks]) -> int:
    """Sets the hooks and replaces earlier ones. They stay until `zovkpopup_shut_down`."""
    return _library.zovkpopup_set_hooks(None if hooks is None else byref(hooks))


_library.zovkpopup_hold_popups.argtypes = []
_library.zovkpopup_hold_popups.restype = c_int32


def hold_popups() -> int:
    """Holds popups back, for example during a cut-scene or a match. New requests wait; a popup
    that is on screen stays."""
    return _library.zovkpopup_hold_popups()


_library.zovkpopup_release_popups.argtypes = []
_library.zovkpopup_release_popups.restype = c_int32


def release_popups() -> int:
    """Ends holding back. Waiting requests are shown first."""
    return _library.zovkpopup_release_popups()


_library.zovkpopup_game_window_did_become_key.argtypes = []
_library.zovkpopup_game_window_did_become_key.restype = c_int32


def game_window_did_become_key() -> int:
    """Reports that the game's window took the keyboard. Not needed with `native_window`."""
    return _library.zovkpopup_game_window_did_become_key()


_library.zovkpopup_game_window_did_resign_key.argtypes = []
_library.zovkpopup_game_window_did_resign_key.restype = c_int32


def game_window_did_resign_key() -> int:
    """Reports that the game's window lost the keyboard. Not needed with `native_window`."""
    return _library.zovkpopup_game_window_did_resign_key()


_library.zovkpopup_game_pad_did_press.argtypes = [c_uint32, c_char_p, c_char_p]
_library.zovkpopup_game_pad_did_press.restype = c_int32


def game_pad_did_press(press: int, press_name: Optional[str], leave_name: Optional[str]) -> int:
    """Passes a press of a game pad, one of `zovkpopup_game_pad`, to the front popup or web
    window. Has no effect if there is none. The game reads its pads; the library does not repeat a
    press that is held. The names are the labels of the player's buttons for press and leave, "A"
    and "B" if NULL; a line at the foot of the popup shows them. Returns ZOVKPOPUP_ERROR_ARGUMENT
    for an unknown press."""
    return _library.zovkpopup_game_pad_did_press(press, _bytes(press_name), _bytes(leave_name))


_library.zovkpopup_game_window_did_resize.argtypes = [c_int32, c_int32]
_library.zovkpopup_game_window_did_resize.restype = c_int32


def game_window_did_resize(width: int, height: int) -> int:
    """Reports the size of the game's window in logical pixels. On Wayland, call it after
    `zovkpopup_set_up` and whenever the size changes. On X11 the library sees the size itself."""
    return _library.zovkpopup_game_window_did_resize(width, height)


_library.zovkpopup_shut_down.argtypes = []
_library.zovkpopup_shut_down.restype = c_int32


def shut_down() -> int:
    """Ends everything within two seconds: popups and web windows close. No callback is called any
    more, except `destroy`. May be called twice."""
    return _library.zovkpopup_shut_down()


_library.zovkpopup_start.argtypes = [c_char_p, c_char_p, c_char_p]
_library.zovkpopup_start.restype = c_int32


def start(base_url: Optional[str], game_id: Optional[str], game_key: Optional[str]) -> int:
    """Starts the popups. Only the first call in a process has an effect. `base_url` is the
    address of the popup service, without a trailing slash. NULL counts as empty. Without a
    service, the popups are those shipped with the game and those of an earlier answer."""
    return _library.zovkpopup_start(_bytes(base_url), _bytes(game_id), _bytes(game_key))


_library.zovkpopup_set_channel_id.argtypes = [c_int32, c_char_p, c_char_p, c_char_p]
_library.zovkpopup_set_channel_id.restype = c_int32


def set_channel_id(channel_id: int, open_id: Optional[str], token: Optional[str], jwt_token: Optional[str]) -> int:
    """Sets the player's identity. Unknown texts may be NULL. May be called any number of
    times."""
    return _library.zovkpopup_set_channel_id(channel_id, _bytes(open_id), _bytes(token), _bytes(jwt_token))


_library.zovkpopup_have_popup.argtypes = [c_uint64]
_library.zovkpopup_have_popup.restype = c_bool


def have_popup(scene_type: int) -> bool:
    """Returns whether a popup for this scene type would be shown now; false also after an
    error."""
    return _library.zovkpopup_have_popup(scene_type)


_library.zovkpopup_show_popup.argtypes = [c_char_p, c_uint64, Complete, c_void_p, Destroy]
_library.zovkpopup_show_popup.restype = c_int32


def show_popup(scene: Optional[str], scene_type: int, complete: Optional[Complete], user: Any, destroy: Optional[Destroy]) -> int:
    """Shows the popup of a scene or, if `scene` is NULL or empty, every valid popup of the scene
    type, best first. Requests are shown one after another. `complete` may be NULL. It is called
    at most once. It is called at once, from within this call, if there is nothing to show or the
    call fails. It is not called if a conditional popup commits with no popup behind it, or if the
    host is shut down first. The request ends with 0 and "reatin complete" if the service does not
    want its conditional popup after all, or if a page commits without an address to report to.
    After a cancel, the popups behind it are not shown."""
    return _library.zovkpopup_show_popup(_bytes(scene), scene_type, Complete() if complete is None else complete, user, Destroy() if destroy is None else destroy)


_library.zovkpopup_show_policy.argtypes = [Complete, c_void_p, Destroy]
_library.zovkpopup_show_policy.restype = c_int32


def show_policy(complete: Optional[Complete], user: Any, destroy: Optional[Destroy]) -> int:
    """Shows the privacy policy if a newer version was published than the one the player saw last.
    Otherwise `complete` is called at once with -1 and ""."""
    return _library.zovkpopup_show_policy(Complete() if complete is None else complete, user, Destroy() if destroy is None else destroy)


_library.zovkpopup_explain.argtypes = [c_char_p, c_uint64, POINTER(c_void_p)]
_library.zovkpopup_explain.restype = c_int32


def explain(scene: Optional[str], scene_type: int, explanation: Any) -> int:
    """Explains what `zovkpopup_show_popup` would select now, and why. Shows nothing. Any thread;
    the same holds for all functions of an explanation. The caller frees `*explanation`."""
    return _library.zovkpopup_explain(_bytes(scene), scene_type, explanation)


_library.zovkpopup_explanation_sentence.argtypes = [c_void_p]
_library.zovkpopup_explanation_sentence.restype = c_char_p


def explanation_sentence(explanation: Any) -> Optional[str]:
    """Returns a sentence about the whole request. NULL for NULL."""
    return _text(_library.zovkpopup_explanation_sentence(explanation))


_library.zovkpopup_explanation_popup_count.argtypes = [c_void_p]
_library.zovkpopup_explanation_popup_count.restype = c_size_t


def explanation_popup_count(explanation: Any) -> int:
    """Returns the number of popups that the selection examined. 0 for NULL."""
    return _library.zovkpopup_explanation_popup_count(explanation)


_library.zovkpopup_explanation_popup.argtypes = [c_void_p, c_size_t, POINTER(ExplainedPopup)]
_library.zovkpopup_explanation_popup.restype = c_int32


def explanation_popup(explanation: Any, index: int, popup: Optional[ExplainedPopup]) -> int:
    """Fills `popup` with the popup at `index`, counted from 0, in the order of examination. Set
    `popup->size` before the call."""
    return _library.zovkpopup_explanation_popup(explanation, index, None if popup is None else byref(popup))


_library.zovkpopup_explanation_free.argtypes = [c_void_p]
_library.zovkpopup_explanation_free.restype = None


def explanation_free(explanation: Any) -> None:
    """Frees the explanation and its texts."""
    return _library.zovkpopup_explanation_free(explanation)


_library.zovkpopup_web_window_open.argtypes = [POINTER(WebWindowSettings), POINTER(c_void_p)]
_library.zovkpopup_web_window_open.restype = c_int32


def web_window_open(settings: Optional[WebWindowSettings], window: Any) -> int:
    """Opens a window and begins to load its page. On failure `*window` is set to NULL. Handlers
    that are registered before the next pump miss no message."""
    return _library.zovkpopup_web_window_open(None if settings is None else byref(settings), window)


_library.zovkpopup_web_window_close.argtypes = [c_void_p]
_library.zovkpopup_web_window_close.restype = c_int32


def web_window_close(window: Any) -> int:
    """Closes the window and releases its callbacks and handlers. None of them is called any more;
    only the results of scripts that still run are reported, as errors. The handle stays valid.
    May be called twice, and within any callback of the window."""
    return _library.zovkpopup_web_window_close(window)


_library.zovkpopup_web_window_free.argtypes = [c_void_p]
_library.zovkpopup_web_window_free.restype = None


def web_window_free(window: Any) -> None:
    """Closes the window if it is open, and frees the handle. May be called after the host was
    shut down, and within any callback of the window."""
    return _library.zovkpopup_web_window_free(window)


_library.zovkpopup_web_window_is_open.argtypes = [c_void_p]
_library.zovkpopup_web_window_is_open.restype = c_bool


def web_window_is_open(window: Any) -> bool:
    """Returns false after the window was closed, after a failure, and after the host was shut
    down."""
    return _library.zovkpopup_web_window_is_open(window)


_library.zovkpopup_web_window_reload.argtypes = [c_void_p]
_library.zovkpopup_web_window_reload.restype = c_int32


def web_window_reload(window: Any) -> int:
    """Loads the page again."""
    return _library.zovkpopup_web_window_reload(window)


_library.zovkpopup_web_window_evaluate.argtypes = [c_void_p, c_char_p, ScriptResult, c_void_p, Destroy]
_library.zovkpopup_web_window_evaluate.restype = c_int32


def web_window_evaluate(window: Any, script: Optional[str], result: Optional[ScriptResult], user: Any, destroy: Optional[Destroy]) -> int:
    """Runs a script in the page. `result` may be NULL. It is called once, with an error if the
    window closes first. It is not called if this call fails or the host is shut down first."""
    return _library.zovkpopup_web_window_evaluate(window, _bytes(script), ScriptResult() if result is None else result, user, Destroy() if destroy is None else destroy)


_library.zovkpopup_response_send.argtypes = [c_void_p, c_char_p]
_library.zovkpopup_response_send.restype = c_int32


def response_send(response: Any, json: Optional[str]) -> int:
    """Answers the page; NULL answers without a value. Works once: a second call returns
    ZOVKPOPUP_ERROR_STATE. After ZOVKPOPUP_ERROR_JSON the handle can still answer. It is no error
    if the page is gone or wants no answer; the answer is then dropped. Any thread, one at a
    time."""
    return _library.zovkpopup_response_send(response, _bytes(json))


_library.zovkpopup_response_free.argtypes = [c_void_p]
_library.zovkpopup_response_free.restype = None


def response_free(response: Any) -> None:
    """Frees the handle. Any thread."""
    return _library.zovkpopup_response_free(response)


_library.zovkpopup_web_window_register_handler.argtypes = [c_void_p, c_char_p, Handler, c_void_p, Destroy]
_library.zovkpopup_web_window_register_handler.restype = c_int32


def web_window_register_handler(window: Any, name: Optional[str], handler: Optional[Handler], user: Any, destroy: Optional[Destroy]) -> int:
    """Registers a handler that the page may call by name. It replaces an earlier handler of that
    name."""
    return _library.zovkpopup_web_window_register_handler(window, _bytes(name), Handler() if handler is None else handler, user, Destroy() if destroy is None else destroy)


_library.zovkpopup_web_window_remove_handler.argtypes = [c_void_p, c_char_p]
_library.zovkpopup_web_window_remove_handler.restype = c_int32


def web_window_remove_handler(window: Any, name: Optional[str]) -> int:
    """Removes a handler."""
    return _library.zovkpopup_web_window_remove_handler(window, _bytes(name))


_library.zovkpopup_web_window_call_handler.argtypes = [c_void_p, c_char_p, c_char_p, Answer, c_void_p, Destroy]
_library.zovkpopup_web_window_call_handler.restype = c_int32


def web_window_call_handler(window: Any, name: Optional[str], json: Optional[str], answer: Optional[Answer], user: Any, destroy: Optional[Destroy]) -> int:
    """Calls a handler of the page. `json` may be NULL for no data, and `answer` NULL for no
    answer. `answer` is called at most once. It is kept until the page answers or is left, or the
    window closes."""
    return _library.zovkpopup_web_window_call_handler(window, _bytes(name), _bytes(json), Answer() if answer is None else answer, user, Destroy() if destroy is None else destroy)


_library.zovkpopup_web_window_send.argtypes = [c_void_p, c_char_p, Answer, c_void_p, Destroy]
_library.zovkpopup_web_window_send.restype = c_int32


def web_window_send(window: Any, json: Optional[str], answer: Optional[Answer], user: Any, destroy: Optional[Destroy]) -> int:
    """Sends data without naming a handler. The page warns on its console that it has no handler
    for it."""
    return _library.zovkpopup_web_window_send(window, _bytes(json), Answer() if answer is None else answer, user, Destroy() if destroy is None else destroy)


_library.zovkpopup_web_window_reset_bridge.argtypes = [c_void_p]
_library.zovkpopup_web_window_reset_bridge.restype = c_int32


def web_window_reset_bridge(window: Any) -> int:
    """Drops callbacks that wait for the page, and holds messages back until the page asks for the
    bridge. Call it before a reload that must not lose messages."""
    return _library.zovkpopup_web_window_reset_bridge(window)


_library.zovkpopup_web_window_send_held.argtypes = [c_void_p]
_library.zovkpopup_web_window_send_held.restype = c_int32


def web_window_send_held(window: Any) -> int:
    """Sends the messages that were held back, without waiting for the page to ask."""
    return _library.zovkpopup_web_window_send_held(window)


_library.zovkpopup_web_window_disable_alert_box_safety_timeout.argtypes = [c_void_p]
_library.zovkpopup_web_window_disable_alert_box_safety_timeout.restype = c_int32


def web_window_disable_alert_box_safety_timeout(window: Any) -> int:
    """Makes the page handle messages at once. Use it only for pages that open no dialogs."""
    return _library.zovkpopup_web_window_disable_alert_box_safety_timeout(window)


_library.zovkpopup_log_bridges.argtypes = [c_int32]
_library.zovkpopup_log_bridges.restype = c_int32


def log_bridges(longest_message: int) -> int:
    """Writes the traffic of all bridges to the log from now on. Each message is cut off after
    `longest_message` characters; a negative number means no limit. Any thread."""
    return _library.zovkpopup_log_bridges(longest_message)
