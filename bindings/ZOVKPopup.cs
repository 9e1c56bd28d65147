// ZOVKPopup for C#, by P/Invoke. Made from zovkpopup.h by bindings/generate.py.
// Keep the delegates that are handed over in a field: what only the library holds is collected.
// Texts that come as IntPtr are read by Native.Text.
using System;
using System.Runtime.InteropServices;

namespace ZOVKPopup {

  /// <summary>Lets the user data of a callback go.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Destroy(IntPtr argument0);

  /// <summary>Tells that something has happened.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Event(IntPtr argument0);

  /// <summary>Tells that something has happened, and why.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void TextEvent([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, IntPtr argument1);

  /// <summary>Takes one log line, without a line end. Called from any thread, also while other
  /// calls are under way; it must not call the library.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Log([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, IntPtr argument1);

  /// <summary>Hears how a request to show popups ended. `code` is a `ZOVKPOPUP_RESULT_…`;
  /// `message` is a JSON text {"action":…,"msg":…} with what the page said, or a plain text, or
  /// empty; never NULL. docs/integration.md has a table of all cases.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Complete(int argument0, [MarshalAs(UnmanagedType.LPUTF8Str)] string argument1, IntPtr argument2);

  /// <summary>Fills in the frame that the player saw last. The pixels are copied as soon as it
  /// has returned.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Backdrop(IntPtr argument0, IntPtr argument1);

  /// <summary>Whether a page may navigate to an address, in one of the
  /// ZOVKPOPUP_FRAME_….</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  [return: MarshalAs(UnmanagedType.I1)] public delegate bool AllowNavigation([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, int argument1, IntPtr argument2);

  /// <summary>Hears the result of a script: exactly one of the two is not NULL.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void ScriptResult([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, [MarshalAs(UnmanagedType.LPUTF8Str)] string argument1, IntPtr argument2);

  /// <summary>A handler that the page may call. `json` is NULL when the page gave no data. The
  /// handler owns `response`, which is never NULL, and has to free it, answered or not.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Handler([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, IntPtr argument1, IntPtr argument2);

  /// <summary>Hears the page's answer; `json` is NULL when it is none.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Answer([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, IntPtr argument1);

  /// <summary>A frame of the game's, in memory of the game's.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct Picture {
    /// <summary>Set by the library: members beyond it must not be written.</summary>
    public UIntPtr Size;
    /// <summary>Of the row at the top; NULL, as it comes, for no picture.</summary>
    public IntPtr Pixels;
    /// <summary>In pixels; 16,384 at most.</summary>
    public ulong Width;
    /// <summary>The same.</summary>
    public ulong Height;
    /// <summary>Bytes from one row to the one below it: 0 when rows follow one another without a
    /// gap, and less than 0 when the row at the top comes last, as GL reads them.</summary>
    public long Stride;
    /// <summary>One of `zovkpopup_pixels`.</summary>
    public ulong Format;
    /// <summary>One with its size, all else zero.</summary>
    public static Picture New() {
      return new Picture { Size = (UIntPtr)Marshal.SizeOf(typeof(Picture)) };
    }
  }

  /// <summary>What a game may say about itself. Every member but `size` has a default:
  /// zero.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct Settings {
    public UIntPtr Size;
    /// <summary>Names the application's own data: letters, digits, dots, dashes, underscores. By
    /// default the program's name.</summary>
    public IntPtr ApplicationId;
    /// <summary>Where the game's resources lie (absolute path); by default the program's own
    /// directory.</summary>
    public IntPtr ResourceDirectory;
    /// <summary>The application's home directory (absolute path); by default `$XDG_DATA_HOME/
    /// &lt;application id>`.</summary>
    public IntPtr DataDirectory;
    /// <summary>The helper program `zovkpopup-helper`; by default the one installed with the
    /// library.</summary>
    public IntPtr HelperPath;
    /// <summary>The X11 window of the game, 0 when it has none.</summary>
    public ulong NativeWindow;
    /// <summary>A PEM file (absolute path) with certificate authorities to trust beside the
    /// system's.</summary>
    public IntPtr CertificateAuthority;
    /// <summary>Takes the log lines instead of standard error, until the host is set up anew; so
    /// `log_destroy` may not be called before the process ends.</summary>
    public Log Log;
    public IntPtr LogUser;
    public Destroy LogDestroy;
    /// <summary>How many megabytes (of 1,048,576 bytes) a page's process may take before it is
    /// ended and its page loaded again, 64 at least; by default 1024.</summary>
    public ulong PageMemory;
    /// <summary>How popups are drawn, in any case: "hardware", by the graphics processor;
    /// "software", without it; "plain", with the least memory, for pages that are opaque or stand
    /// still; "auto", the default, by the graphics processor where there is one; "look" is the
    /// same, but asks the graphics driver even where no device is seen. The player's environment
    /// variable `ZOVKPOPUP_DRAWING` goes before it.</summary>
    public IntPtr Drawing;
    /// <summary>The game's window as text: "x11:NUMBER", the same as `native_window`, or
    /// "wayland:HANDLE", what the compositor's `zxdg_exporter` gave for it. By default what
    /// `native_window` says.</summary>
    public IntPtr GameWindow;
    /// <summary>The kind of window that popups have, in any case: "auto", the default, stands
    /// over the game's window wherever the display lets it; "fullscreen" takes the whole screen.
    /// The player's environment variable `ZOVKPOPUP_WINDOW` goes before it.</summary>
    public IntPtr PopupWindow;
    /// <summary>Gives the game's last frame, for the displays on which a popup hides the game: it
    /// then lies beneath the page. Asked once when popups are about to cover the game and again
    /// after the popup has got another size, on the main thread; it must not call the library. On
    /// other displays it is never asked. Without it what is behind a page is plain and
    /// dark.</summary>
    public Backdrop Backdrop;
    public IntPtr BackdropUser;
    public Destroy BackdropDestroy;
    /// <summary>How many seconds popups stay ready to come up at once when nothing is shown; by
    /// default 60. After that the helper gives up what it held ready for the next page, and ten
    /// minutes later it ends. The next popup brings it back, and so does a `zovkpopup_have_popup`
    /// that is true.</summary>
    public ulong ReadySeconds;
    /// <summary>One with its size, all else zero.</summary>
    public static Settings New() {
      return new Settings { Size = (UIntPtr)Marshal.SizeOf(typeof(Settings)) };
    }
  }

  /// <summary>Around the time in which popups cover the game. Every member but `size` may be
  /// NULL.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct Hooks {
    public UIntPtr Size;
    /// <summary>Before the first popup comes on screen.</summary>
    public Event PopupsWillAppear;
    /// <summary>After the last one is gone.</summary>
    public Event PopupsDidDisappear;
    public IntPtr User;
    public Destroy Destroy;
    /// <summary>One with its size, all else zero.</summary>
    public static Hooks New() {
      return new Hooks { Size = (UIntPtr)Marshal.SizeOf(typeof(Hooks)) };
    }
  }

  /// <summary>What the selection thinks of one popup. The texts belong to the
  /// explanation.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct ExplainedPopup {
    public UIntPtr Size;
    public IntPtr Scene;
    /// <summary>Name of the page file, or the address of a web page.</summary>
    public IntPtr Page;
    /// <summary>"passed", or the first rule that the popup fails: "other_scene",
    /// "other_scene_type", "other_channel", "not_yet_valid", "expired", "file_missing",
    /// "already_shown", "digest_differs"; or "not_reached" when an earlier popup stands for the
    /// scene.</summary>
    public IntPtr Verdict;
    /// <summary>What that rule asks for.</summary>
    public IntPtr Wanted;
    /// <summary>What it was compared with.</summary>
    public IntPtr Found;
    /// <summary>The same in plain English.</summary>
    public IntPtr Sentence;
    /// <summary>When it would be shown: 1 is first. 0 is not at all.</summary>
    public ulong Rank;
    public long PopId;
    /// <summary>One with its size, all else zero.</summary>
    public static ExplainedPopup New() {
      return new ExplainedPopup { Size = (UIntPtr)Marshal.SizeOf(typeof(ExplainedPopup)) };
    }
  }

  /// <summary>What a web window shows, and who hears of it. Exactly one of `address` and
  /// `page_file` is given; all else may be zero.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct WebWindowSettings {
    public UIntPtr Size;
    /// <summary>An http or https address.</summary>
    public IntPtr Address;
    /// <summary>The absolute path of a page file, which can read no other file.</summary>
    public IntPtr PageFile;
    /// <summary>Where the window stands on the screen, in logical pixels, where windows can be
    /// placed; the full screen when width and height are 0.</summary>
    public double X;
    /// <summary>Where the window stands on the screen, in logical pixels, where windows can be
    /// placed; the full screen when width and height are 0.</summary>
    public double Y;
    /// <summary>Where the window stands on the screen, in logical pixels, where windows can be
    /// placed; the full screen when width and height are 0.</summary>
    public double Width;
    /// <summary>Where the window stands on the screen, in logical pixels, where windows can be
    /// placed; the full screen when width and height are 0.</summary>
    public double Height;
    /// <summary>1 lets the game be seen where the page is clear.</summary>
    public ulong SeeThrough;
    /// <summary>A page has taken the place of the one before; the first one has, too.</summary>
    public Event PageChanged;
    /// <summary>The window is gone because its helper program failed; said once, after it was
    /// closed.</summary>
    public TextEvent Failed;
    /// <summary>Asked before each navigation that is not the bridge's own; without it, all are
    /// allowed.</summary>
    public AllowNavigation AllowNavigation;
    public Event LoadStarted;
    public Event LoadFinished;
    /// <summary>Told the error. Close the window, or offer a reload.</summary>
    public TextEvent LoadFailed;
    /// <summary>The page is loaded again.</summary>
    public Event PageProcessEnded;
    /// <summary>Told the address. None is ever opened.</summary>
    public TextEvent NewWindowAsked;
    public IntPtr User;
    public Destroy Destroy;
    /// <summary>One with its size, all else zero.</summary>
    public static WebWindowSettings New() {
      return new WebWindowSettings { Size = (UIntPtr)Marshal.SizeOf(typeof(WebWindowSettings)) };
    }
  }

  public static class Native {
    private const string Library = "libzovkpopup.so.1";

    public const int Ok = 0;
    /// <summary>NULL where something has to be, or a value without sense.</summary>
    public const int ErrorArgument = -1;
    /// <summary>A struct's `size` is that of no version.</summary>
    public const int ErrorSize = -2;
    /// <summary>A text is no JSON.</summary>
    public const int ErrorJson = -3;
    /// <summary>Not set up, shut down, set up before, closed, or answered.</summary>
    public const int ErrorState = -4;
    /// <summary>The call belongs to the main thread.</summary>
    public const int ErrorThread = -5;
    /// <summary>There was not enough memory.</summary>
    public const int ErrorMemory = -6;
    /// <summary>Something else; the log says what.</summary>
    public const int ErrorInternal = -7;
    /// <summary>Nothing was shown, or it could not be seen to its end.</summary>
    public const int ResultError = -1;
    /// <summary>The player closed the popup, or nothing was left to show.</summary>
    public const int ResultSkip = 0;
    /// <summary>The player agreed.</summary>
    public const int ResultCommit = 1;
    /// <summary>The player refused.</summary>
    public const int ResultCancel = 2;
    /// <summary>Four bytes; SDL's ARGB8888 and XRGB8888.</summary>
    public const int PixelsBgrx = 0;
    /// <summary>Four bytes; what GL reads as GL_RGBA.</summary>
    public const int PixelsRgbx = 1;
    /// <summary>Three bytes.</summary>
    public const int PixelsRgb = 2;
    /// <summary>A direction moves the focus to what lies there.</summary>
    public const int GamePadUp = 0;
    public const int GamePadDown = 1;
    public const int GamePadLeft = 2;
    public const int GamePadRight = 3;
    /// <summary>Presses what has the focus.</summary>
    public const int GamePadPress = 4;
    /// <summary>Does what the escape key does.</summary>
    public const int GamePadLeave = 5;
    public const int FrameNewWindow = 0;
    public const int FrameMain = 1;
    public const int FrameSub = 2;

    /// <summary>A text of the library's; null for none.</summary>
    public static string Text(IntPtr text) {
      return Marshal.PtrToStringUTF8(text);
    }

    /// <summary>The version of the library that runs; it may be a newer one than the header's.
    /// Any thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_version")]
    public static extern IntPtr Version();

    [DllImport(Library, EntryPoint = "zovkpopup_version_number")]
    public static extern uint VersionNumber();

    /// <summary>What a status means, in English; never NULL, and not to be freed. Any
    /// thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_error_message")]
    public static extern IntPtr ErrorMessage(int status);

    /// <summary>Call it once before anything else, and again only after `zovkpopup_shut_down`.
    /// NULL is all defaults. ZOVKPOPUP_ERROR_STATE when it was called before, or the popups are
    /// already in use.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_set_up")]
    public static extern int SetUp(ref Settings settings);

    /// <summary>Runs what is due and returns; never waits. Call it once a frame. No task is begun
    /// after so many microseconds, 2,000 say; what is left is run by the next call. Has no effect
    /// within a callback.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_pump")]
    public static extern int Pump(uint budgetMicroseconds);

    /// <summary>A file descriptor that is readable when `zovkpopup_pump` has something to do, for
    /// games with an event loop; -1 when not set up. The library owns it, until
    /// `zovkpopup_shut_down`.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_poll_descriptor")]
    public static extern int PollDescriptor();

    /// <summary>Sets the hooks in place of earlier ones. They stay until
    /// `zovkpopup_shut_down`.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_set_hooks")]
    public static extern int SetHooks(ref Hooks hooks);

    /// <summary>Holds popups back, for a cut-scene or a match: requests wait, what is on screen
    /// stays.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_hold_popups")]
    public static extern int HoldPopups();

    /// <summary>Lets them go on, with what has waited first.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_release_popups")]
    public static extern int ReleasePopups();

    /// <summary>Tells that the game's own window took the keyboard, or lost it. Not needed with
    /// `native_window`.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_game_window_did_become_key")]
    public static extern int GameWindowDidBecomeKey();

    [DllImport(Library, EntryPoint = "zovkpopup_game_window_did_resign_key")]
    public static extern int GameWindowDidResignKey();

    /// <summary>Hands a press of a game pad, one of `zovkpopup_game_pad`, to the popup or web
    /// window in front; nothing happens when there is none. The game reads its pads; what is held
    /// is not repeated. The names are what is written on the player's buttons that press and
    /// leave, "A" and "B" where NULL: a line at the foot of the popup shows them.
    /// ZOVKPOPUP_ERROR_ARGUMENT for a number that is none of the above.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_game_pad_did_press")]
    public static extern int GamePadDidPress(uint press, [MarshalAs(UnmanagedType.LPUTF8Str)] string pressName, [MarshalAs(UnmanagedType.LPUTF8Str)] string leaveName);

    /// <summary>Tells how large the game's own window is, in logical pixels: on Wayland once
    /// after `zovkpopup_set_up` and whenever it changes. On X11 it is seen without.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_game_window_did_resize")]
    public static extern int GameWindowDidResize(int width, int height);

    /// <summary>Ends everything within two seconds: an open popup closes, web windows close, and
    /// no callback is called any more but `destroy`. May be called twice.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_shut_down")]
    public static extern int ShutDown();

    /// <summary>Starts the popups: once per process, later calls are ignored. `base_url` is the
    /// address of the popup service, without a trailing slash. NULL counts as empty; without a
    /// service the popups are those that were shipped with the game and those of an earlier
    /// answer.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_start")]
    public static extern int Start([MarshalAs(UnmanagedType.LPUTF8Str)] string baseUrl, [MarshalAs(UnmanagedType.LPUTF8Str)] string gameId, [MarshalAs(UnmanagedType.LPUTF8Str)] string gameKey);

    /// <summary>Tells who the player is; what is not known may be NULL. Any number of
    /// times.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_set_channel_id")]
    public static extern int SetChannelId(int channelId, [MarshalAs(UnmanagedType.LPUTF8Str)] string openId, [MarshalAs(UnmanagedType.LPUTF8Str)] string token, [MarshalAs(UnmanagedType.LPUTF8Str)] string jwtToken);

    /// <summary>Whether a popup for this scene type would be shown now; false after an error,
    /// too.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_have_popup")]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool HavePopup(ulong sceneType);

    /// <summary>Shows the popup of a scene, or, when `scene` is NULL or empty, every valid popup
    /// of the scene type, best first. Requests are shown one after another. `complete`, which may
    /// be NULL, is called once at the most: at once, from within this call, when there is nothing
    /// to show and when the call fails; not at all when a conditional popup commits with none
    /// behind it, and when the host is shut down before. A request whose popup may not be shown
    /// after all, as its service does not want it, or whose page commits without an address to
    /// report to, ends with 0 and "reatin complete". Popups behind one that is cancelled are not
    /// shown.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_show_popup")]
    public static extern int ShowPopup([MarshalAs(UnmanagedType.LPUTF8Str)] string scene, ulong sceneType, Complete complete, IntPtr user, Destroy destroy);

    /// <summary>Shows the privacy policy if a newer one was published than the player last saw.
    /// Otherwise `complete` is called at once with -1 and "".</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_show_policy")]
    public static extern int ShowPolicy(Complete complete, IntPtr user, Destroy destroy);

    /// <summary>Tells what `zovkpopup_show_popup` would select now, and why, without showing
    /// anything. Any thread, and so with all functions of an explanation.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explain")]
    public static extern int Explain([MarshalAs(UnmanagedType.LPUTF8Str)] string scene, ulong sceneType, out IntPtr explanation);

    /// <summary>How the whole request would go. NULL for NULL.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explanation_sentence")]
    public static extern IntPtr ExplanationSentence(IntPtr explanation);

    /// <summary>How many popups were looked at. 0 for NULL.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explanation_popup_count")]
    public static extern UIntPtr ExplanationPopupCount(IntPtr explanation);

    /// <summary>Fills `popup`, of which the caller has set the size, with the one at `index`,
    /// from 0, in the order in which they are looked at.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explanation_popup")]
    public static extern int ExplanationPopup(IntPtr explanation, UIntPtr index, ref ExplainedPopup popup);

    [DllImport(Library, EntryPoint = "zovkpopup_explanation_free")]
    public static extern void ExplanationFree(IntPtr explanation);

    /// <summary>Opens a window and begins to load its page. `window` is set to NULL when that
    /// fails. Handlers that are registered before the next pump miss nothing.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_open")]
    public static extern int WebWindowOpen(ref WebWindowSettings settings, out IntPtr window);

    /// <summary>Closes the window and lets its callbacks and handlers go; none is called any
    /// more, but those of scripts under way. The handle stays. May be called twice, and within
    /// any of its callbacks.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_close")]
    public static extern int WebWindowClose(IntPtr window);

    /// <summary>Closes the window if need be, and frees the handle; also after the host was shut
    /// down, and within any of its callbacks.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_free")]
    public static extern void WebWindowFree(IntPtr window);

    /// <summary>False after it was closed, after a failure, and after the host was shut
    /// down.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_is_open")]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool WebWindowIsOpen(IntPtr window);

    /// <summary>Loads the page anew.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_reload")]
    public static extern int WebWindowReload(IntPtr window);

    /// <summary>Runs a script in the page. `result`, which may be NULL, is called once unless the
    /// call fails or the host is shut down before; with an error when the window closes
    /// before.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_evaluate")]
    public static extern int WebWindowEvaluate(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string script, ScriptResult result, IntPtr user, Destroy destroy);

    /// <summary>Answers the page, with NULL for nothing. Once; the second time is
    /// ZOVKPOPUP_ERROR_STATE. After a ZOVKPOPUP_ERROR_JSON it may be answered still. The answer
    /// to a page that is gone goes nowhere, which is no error, and a page that wants no answer
    /// gets none. Any thread, one at a time.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_response_send")]
    public static extern int ResponseSend(IntPtr response, [MarshalAs(UnmanagedType.LPUTF8Str)] string json);

    /// <summary>Any thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_response_free")]
    public static extern void ResponseFree(IntPtr response);

    /// <summary>Lets the page call `handler`, in place of any earlier one of that name.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_register_handler")]
    public static extern int WebWindowRegisterHandler(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string name, Handler handler, IntPtr user, Destroy destroy);

    [DllImport(Library, EntryPoint = "zovkpopup_web_window_remove_handler")]
    public static extern int WebWindowRemoveHandler(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string name);

    /// <summary>Calls a handler of the page. `json` may be NULL for no data, `answer` for no
    /// answer. `answer` is called once at most, and kept until the page answers, is left, or the
    /// window closes.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_call_handler")]
    public static extern int WebWindowCallHandler(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string name, [MarshalAs(UnmanagedType.LPUTF8Str)] string json, Answer answer, IntPtr user, Destroy destroy);

    /// <summary>Sends data to no handler in particular; the page warns on its console that it has
    /// none for it.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_send")]
    public static extern int WebWindowSend(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string json, Answer answer, IntPtr user, Destroy destroy);

    /// <summary>Forgets callbacks that wait for the page, and holds messages back until it asks
    /// for the bridge: before a reload in which no message is to be lost.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_reset_bridge")]
    public static extern int WebWindowResetBridge(IntPtr window);

    /// <summary>Sends what was held back, without waiting for the page to ask.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_send_held")]
    public static extern int WebWindowSendHeld(IntPtr window);

    /// <summary>Tells the page to handle messages at once. Only for pages that open no
    /// dialogs.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_disable_alert_box_safety_timeout")]
    public static extern int WebWindowDisableAlertBoxSafetyTimeout(IntPtr window);

    /// <summary>Writes the traffic of all bridges to the log, from now on, each message up to so
    /// many characters; a number below 0 stands for all of them. Any thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_log_bridges")]
    public static extern int LogBridges(int longestMessage);

  }
}
