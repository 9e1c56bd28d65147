// ZOVKPopup for C#, by P/Invoke. Made from zovkpopup.h by bindings/generate.py.
// Keep the delegates that are handed over in a field: what only the library holds is collected.
// Texts that come as IntPtr are read by Native.Text.
using System;
using System.Runtime.InteropServices;

namespace ZOVKPopup {

  /// <summary>Releases the user data of a callback.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Destroy(IntPtr argument0);

  /// <summary>Reports an event.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Event(IntPtr argument0);

  /// <summary>Reports an event with a text, such as a reason or an address.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void TextEvent([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, IntPtr argument1);

  /// <summary>Receives one log line, without a line end. Called from any thread, also while other
  /// calls are running. It must not call the library.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Log([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, IntPtr argument1);

  /// <summary>Receives the result of a request to show popups. `code` is a `ZOVKPOPUP_RESULT_…`.
  /// `message` is a JSON text {"action":…,"msg":…} with the page's message, or a plain text, or
  /// empty; never NULL. docs/integration.md has a table of all cases.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Complete(int argument0, [MarshalAs(UnmanagedType.LPUTF8Str)] string argument1, IntPtr argument2);

  /// <summary>Fills in the last frame that the player saw. The library copies the pixels as soon
  /// as the callback has returned.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Backdrop(IntPtr argument0, IntPtr argument1);

  /// <summary>Receives what has happened to one popup.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void PopupListener(IntPtr argument0, IntPtr argument1);

  /// <summary>Returns whether a page may navigate to an address. `frame` is one of
  /// ZOVKPOPUP_FRAME_….</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  [return: MarshalAs(UnmanagedType.I1)] public delegate bool AllowNavigation([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, int argument1, IntPtr argument2);

  /// <summary>Receives the result of a script: exactly one of `json` and `error` is not
  /// NULL.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void ScriptResult([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, [MarshalAs(UnmanagedType.LPUTF8Str)] string argument1, IntPtr argument2);

  /// <summary>Handles a call from the page. `json` is NULL if the page gave no data. `response`
  /// is never NULL. The handler owns it and must free it, whether it answers or not.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Handler([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, IntPtr argument1, IntPtr argument2);

  /// <summary>Receives the page's answer; `json` is NULL if it has no value.</summary>
  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void Answer([MarshalAs(UnmanagedType.LPUTF8Str)] string argument0, IntPtr argument1);

  /// <summary>A frame of the game, in the game's memory.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct Picture {
    /// <summary>Set by the library: do not write members beyond it.</summary>
    public UIntPtr Size;
    /// <summary>The start of the top row; NULL, the initial value, for no picture.</summary>
    public IntPtr Pixels;
    /// <summary>In pixels, at most 16,384.</summary>
    public ulong Width;
    /// <summary>In pixels, at most 16,384.</summary>
    public ulong Height;
    /// <summary>The number of bytes from one row to the row below. 0 means that the rows follow
    /// each other without a gap. A negative number means that the top row is the last one in
    /// memory, as GL reads them.</summary>
    public long Stride;
    /// <summary>One of `zovkpopup_pixels`.</summary>
    public ulong Format;
    /// <summary>Returns one with its size set and all else zero.</summary>
    public static Picture New() {
      return new Picture { Size = (UIntPtr)Marshal.SizeOf(typeof(Picture)) };
    }
  }

  /// <summary>The settings of a host. Every member except `size` may be zero, which selects its
  /// default.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct Settings {
    public UIntPtr Size;
    /// <summary>The name of the folder for the application's data: letters, digits, dots, dashes,
    /// underscores. Default: the program's name.</summary>
    public IntPtr ApplicationId;
    /// <summary>The directory of the game's resources (absolute path). Default: the program's
    /// directory.</summary>
    public IntPtr ResourceDirectory;
    /// <summary>The application's home directory (absolute path). Default: `$XDG_DATA_HOME/
    /// &lt;application id>`.</summary>
    public IntPtr DataDirectory;
    /// <summary>The path of the helper program `zovkpopup-helper`. Default: the one installed
    /// with the library.</summary>
    public IntPtr HelperPath;
    /// <summary>The X11 window of the game, or 0 if it has none.</summary>
    public ulong NativeWindow;
    /// <summary>A PEM file (absolute path) with certificate authorities to trust in addition to
    /// the system's.</summary>
    public IntPtr CertificateAuthority;
    /// <summary>Receives the log lines, which otherwise go to standard error. It is used until
    /// the host is set up again, so `log_destroy` may not be called before the process
    /// ends.</summary>
    public Log Log;
    public IntPtr LogUser;
    public Destroy LogDestroy;
    /// <summary>The memory limit of a page's process, in megabytes of 1,048,576 bytes, at least
    /// 64. A process beyond the limit is ended and its page loaded again. Default:
    /// 1024.</summary>
    public ulong PageMemory;
    /// <summary>How popups are drawn. "hardware" uses the graphics processor, "software" does
    /// not. "plain" uses the least memory, for pages that are opaque or do not move. "auto", the
    /// default, uses the graphics processor if there is one. "look" does the same, but asks the
    /// graphics driver even if no device is found. Upper and lower case are the same. The
    /// environment variable `ZOVKPOPUP_DRAWING` overrides this setting.</summary>
    public IntPtr Drawing;
    /// <summary>The game's window as text: "x11:NUMBER", with the number that `native_window`
    /// takes, or "wayland:HANDLE", with the handle from the compositor's `zxdg_exporter`.
    /// Default: the window in `native_window`.</summary>
    public IntPtr GameWindow;
    /// <summary>The kind of popup window. "auto", the default, stands over the game's window if
    /// the display allows it. "fullscreen" takes the whole screen. Upper and lower case are the
    /// same. The environment variable `ZOVKPOPUP_WINDOW` overrides this setting.</summary>
    public IntPtr PopupWindow;
    /// <summary>Provides the game's last frame for displays on which a popup hides the game: the
    /// frame is then drawn beneath the page. Without it, the ground behind the page is plain and
    /// dark there. Called on the main thread when popups are about to cover the game, and again
    /// after the popup's size has changed; never on displays that show the game. It must not call
    /// the library.</summary>
    public Backdrop Backdrop;
    public IntPtr BackdropUser;
    public Destroy BackdropDestroy;
    /// <summary>How many seconds popups stay ready to appear at once when nothing is shown.
    /// Default: 60. After that the helper gives way to one with hardly any memory, and ten
    /// minutes later that one ends. The next popup makes one ready again, and so does a
    /// `zovkpopup_have_popup` that returns true.</summary>
    public ulong ReadySeconds;
    /// <summary>Returns one with its size set and all else zero.</summary>
    public static Settings New() {
      return new Settings { Size = (UIntPtr)Marshal.SizeOf(typeof(Settings)) };
    }
  }

  /// <summary>What has happened to one popup. The texts are never NULL, and valid until the
  /// callback returns.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct PopupEvent {
    /// <summary>Set by the library. Members beyond this size do not exist.</summary>
    public UIntPtr Size;
    /// <summary>One of `zovkpopup_event_kind`.</summary>
    public ulong Kind;
    /// <summary>The popup's scene; the scene of the request if there is no popup.</summary>
    public IntPtr Scene;
    /// <summary>0 if there is no popup.</summary>
    public int PopId;
    /// <summary>If answered: a `ZOVKPOPUP_RESULT_…`. Else ZOVKPOPUP_RESULT_ERROR.</summary>
    public int Result;
    /// <summary>If answered: JSON {"action":…,"msg":…}. Else empty.</summary>
    public IntPtr Message;
    /// <summary>If not shown: the reason in one word. Else empty. It is a verdict of
    /// `zovkpopup_explained_popup`, or one of these: "no_popup" if no popup is defined for the
    /// request; "policy_not_needed"; "condition_refused" and "condition_failed" if the service of
    /// a conditional popup refused it or gave no answer; "page_failed" if the page did not load;
    /// "display_failed" if popups cannot be displayed; "request_ended" if the request ended
    /// before its turn; "skipped_over" if an answer to the popup before it came late or twice and
    /// ended its turn; "report_missing" if the page committed and the popup has no address to
    /// report to.</summary>
    public IntPtr Reason;
    /// <summary>The reason in plain English. Else empty.</summary>
    public IntPtr Sentence;
    /// <summary>Returns one with its size set and all else zero.</summary>
    public static PopupEvent New() {
      return new PopupEvent { Size = (UIntPtr)Marshal.SizeOf(typeof(PopupEvent)) };
    }
  }

  /// <summary>Callbacks for the time in which popups cover the game, and for each popup. Every
  /// member except `size` may be NULL.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct Hooks {
    public UIntPtr Size;
    /// <summary>Called before the first popup comes on screen.</summary>
    public Event PopupsWillAppear;
    /// <summary>Called after the last popup is gone.</summary>
    public Event PopupsDidDisappear;
    public IntPtr User;
    public Destroy Destroy;
    /// <summary>Called for each popup of a request that was shown, answered, or not shown; not
    /// for popups that a shut-down ends. Always called from `zovkpopup_pump`, in the order of the
    /// events. The result of a request comes before the event of the same answer.</summary>
    public PopupListener PopupEvent;
    /// <summary>Returns one with its size set and all else zero.</summary>
    public static Hooks New() {
      return new Hooks { Size = (UIntPtr)Marshal.SizeOf(typeof(Hooks)) };
    }
  }

  /// <summary>The verdict of the selection on one popup. The texts belong to the
  /// explanation.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct ExplainedPopup {
    public UIntPtr Size;
    public IntPtr Scene;
    /// <summary>The name of the page file, or the address of the web page.</summary>
    public IntPtr Page;
    /// <summary>"passed", or the first rule that the popup fails: "other_scene",
    /// "other_scene_type", "other_channel", "not_yet_valid", "expired", "file_missing",
    /// "already_shown", "digest_differs"; or "not_reached" if an earlier popup was chosen for the
    /// scene.</summary>
    public IntPtr Verdict;
    /// <summary>The value that the rule requires.</summary>
    public IntPtr Wanted;
    /// <summary>The value that it was compared with.</summary>
    public IntPtr Found;
    /// <summary>The verdict in plain English.</summary>
    public IntPtr Sentence;
    /// <summary>The place in the order of showing: 1 is first, 0 means not shown.</summary>
    public ulong Rank;
    public long PopId;
    /// <summary>Returns one with its size set and all else zero.</summary>
    public static ExplainedPopup New() {
      return new ExplainedPopup { Size = (UIntPtr)Marshal.SizeOf(typeof(ExplainedPopup)) };
    }
  }

  /// <summary>The contents and the callbacks of a web window. Set exactly one of `address` and
  /// `page_file`; everything else may be zero.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct WebWindowSettings {
    public UIntPtr Size;
    /// <summary>An http or https address.</summary>
    public IntPtr Address;
    /// <summary>The absolute path of a page file. It can read no other file.</summary>
    public IntPtr PageFile;
    /// <summary>The window's place on the screen in logical pixels, on displays where windows can
    /// be placed. Width and height 0 mean the full screen.</summary>
    public double X;
    /// <summary>The window's place on the screen in logical pixels, on displays where windows can
    /// be placed. Width and height 0 mean the full screen.</summary>
    public double Y;
    /// <summary>The window's place on the screen in logical pixels, on displays where windows can
    /// be placed. Width and height 0 mean the full screen.</summary>
    public double Width;
    /// <summary>The window's place on the screen in logical pixels, on displays where windows can
    /// be placed. Width and height 0 mean the full screen.</summary>
    public double Height;
    /// <summary>1 shows the game where the page is clear.</summary>
    public ulong SeeThrough;
    /// <summary>Called when a page has replaced the one before, and for the first page.</summary>
    public Event PageChanged;
    /// <summary>Called once, after the window was closed because its helper program
    /// failed.</summary>
    public TextEvent Failed;
    /// <summary>Called before each navigation except the bridge's own. NULL allows all
    /// navigations.</summary>
    public AllowNavigation AllowNavigation;
    public Event LoadStarted;
    public Event LoadFinished;
    /// <summary>Gets the error. Close the window or offer a reload.</summary>
    public TextEvent LoadFailed;
    /// <summary>The page is being loaded again.</summary>
    public Event PageProcessEnded;
    /// <summary>Gets the address. None is ever opened.</summary>
    public TextEvent NewWindowAsked;
    public IntPtr User;
    public Destroy Destroy;
    /// <summary>Returns one with its size set and all else zero.</summary>
    public static WebWindowSettings New() {
      return new WebWindowSettings { Size = (UIntPtr)Marshal.SizeOf(typeof(WebWindowSettings)) };
    }
  }

  public static class Native {
    private const string Library = "libzovkpopup.so.1";

    public const int Ok = 0;
    /// <summary>An argument is NULL or not allowed.</summary>
    public const int ErrorArgument = -1;
    /// <summary>A struct's `size` fits no version of the struct.</summary>
    public const int ErrorSize = -2;
    /// <summary>A text is not JSON.</summary>
    public const int ErrorJson = -3;
    /// <summary>Not set up, already set up, shut down, closed, or answered.</summary>
    public const int ErrorState = -4;
    /// <summary>The function must be called on the main thread.</summary>
    public const int ErrorThread = -5;
    /// <summary>There was not enough memory.</summary>
    public const int ErrorMemory = -6;
    /// <summary>Something else; the log says what.</summary>
    public const int ErrorInternal = -7;
    /// <summary>Nothing was shown, or a popup failed before it was answered.</summary>
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
    /// <summary>Its page has loaded, on screen.</summary>
    public const int EventShown = 0;
    /// <summary>The player answered or closed it.</summary>
    public const int EventAnswered = 1;
    /// <summary>It was not shown, or not until an answer.</summary>
    public const int EventNotShown = 2;
    /// <summary>A direction moves the focus to the next place there.</summary>
    public const int GamePadUp = 0;
    public const int GamePadDown = 1;
    public const int GamePadLeft = 2;
    public const int GamePadRight = 3;
    /// <summary>Presses the element that has the focus.</summary>
    public const int GamePadPress = 4;
    /// <summary>Does what the escape key does.</summary>
    public const int GamePadLeave = 5;
    public const int FrameNewWindow = 0;
    public const int FrameMain = 1;
    public const int FrameSub = 2;

    /// <summary>Returns a text of the library; null for none.</summary>
    public static string Text(IntPtr text) {
      return Marshal.PtrToStringUTF8(text);
    }

    /// <summary>Returns the version of the running library, which may be newer than this header.
    /// Any thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_version")]
    public static extern IntPtr Version();

    /// <summary>Returns the version of the running library as one number. Any thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_version_number")]
    public static extern uint VersionNumber();

    /// <summary>Returns the meaning of a status in English; never NULL. Do not free it. Any
    /// thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_error_message")]
    public static extern IntPtr ErrorMessage(int status);

    /// <summary>Sets the host up. Call it before all other functions, and again only after
    /// `zovkpopup_shut_down`. NULL selects all defaults. Returns ZOVKPOPUP_ERROR_STATE if the
    /// host is already set up or popups are already in use.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_set_up")]
    public static extern int SetUp(ref Settings settings);

    /// <summary>Runs the tasks that are due, and returns without waiting. Call it once a frame.
    /// After `budget_microseconds`, for example 2,000, no further task is begun; the next call
    /// runs the rest. Has no effect within a callback.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_pump")]
    public static extern int Pump(uint budgetMicroseconds);

    /// <summary>Returns a file descriptor that is readable when `zovkpopup_pump` has something to
    /// do, for games with an event loop. Returns -1 if the host is not set up. The library owns
    /// the descriptor and closes it in `zovkpopup_shut_down`.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_poll_descriptor")]
    public static extern int PollDescriptor();

    /// <summary>Sets the hooks and replaces earlier ones. They stay until
    /// `zovkpopup_shut_down`.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_set_hooks")]
    public static extern int SetHooks(ref Hooks hooks);

    /// <summary>Holds popups back, for example during a cut-scene or a match. New requests wait;
    /// a popup that is on screen stays.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_hold_popups")]
    public static extern int HoldPopups();

    /// <summary>Ends holding back. Waiting requests are shown first.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_release_popups")]
    public static extern int ReleasePopups();

    /// <summary>Reports that the game's window took the keyboard. Not needed with
    /// `native_window`.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_game_window_did_become_key")]
    public static extern int GameWindowDidBecomeKey();

    /// <summary>Reports that the game's window lost the keyboard. Not needed with
    /// `native_window`.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_game_window_did_resign_key")]
    public static extern int GameWindowDidResignKey();

    /// <summary>Passes a press of a game pad, one of `zovkpopup_game_pad`, to the front popup or
    /// web window. Has no effect if there is none. The game reads its pads; the library does not
    /// repeat a press that is held. The names are the labels of the player's buttons for press
    /// and leave, "A" and "B" if NULL; a line at the foot of the popup shows them. Returns
    /// ZOVKPOPUP_ERROR_ARGUMENT for an unknown press.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_game_pad_did_press")]
    public static extern int GamePadDidPress(uint press, [MarshalAs(UnmanagedType.LPUTF8Str)] string pressName, [MarshalAs(UnmanagedType.LPUTF8Str)] string leaveName);

    /// <summary>Reports the size of the game's window in logical pixels. On Wayland, call it
    /// after `zovkpopup_set_up` and whenever the size changes. On X11 the library sees the size
    /// itself.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_game_window_did_resize")]
    public static extern int GameWindowDidResize(int width, int height);

    /// <summary>Ends everything within two seconds: popups and web windows close. No callback is
    /// called any more, except `destroy`. May be called twice.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_shut_down")]
    public static extern int ShutDown();

    /// <summary>Starts the popups. Only the first call in a process has an effect. `base_url` is
    /// the address of the popup service, without a trailing slash. NULL counts as empty. Without
    /// a service, the popups are those shipped with the game and those of an earlier
    /// answer.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_start")]
    public static extern int Start([MarshalAs(UnmanagedType.LPUTF8Str)] string baseUrl, [MarshalAs(UnmanagedType.LPUTF8Str)] string gameId, [MarshalAs(UnmanagedType.LPUTF8Str)] string gameKey);

    /// <summary>Sets the player's identity. Unknown texts may be NULL. May be called any number
    /// of times.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_set_channel_id")]
    public static extern int SetChannelId(int channelId, [MarshalAs(UnmanagedType.LPUTF8Str)] string openId, [MarshalAs(UnmanagedType.LPUTF8Str)] string token, [MarshalAs(UnmanagedType.LPUTF8Str)] string jwtToken);

    /// <summary>Returns whether a popup for this scene type would be shown now; false also after
    /// an error.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_have_popup")]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool HavePopup(ulong sceneType);

    /// <summary>Shows the popup of a scene or, if `scene` is NULL or empty, every valid popup of
    /// the scene type, best first. Requests are shown one after another. `complete` may be NULL.
    /// It is called at most once. It is called at once, from within this call, if there is
    /// nothing to show or the call fails. It is not called if a conditional popup commits with no
    /// popup behind it, or if the host is shut down first. The request ends with 0 and "reatin
    /// complete" if the service does not want its conditional popup after all, or if a page
    /// commits without an address to report to. After a cancel, the popups behind it are not
    /// shown.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_show_popup")]
    public static extern int ShowPopup([MarshalAs(UnmanagedType.LPUTF8Str)] string scene, ulong sceneType, Complete complete, IntPtr user, Destroy destroy);

    /// <summary>Shows the privacy policy if a newer version was published than the one the player
    /// saw last. Otherwise `complete` is called at once with -1 and "".</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_show_policy")]
    public static extern int ShowPolicy(Complete complete, IntPtr user, Destroy destroy);

    /// <summary>Explains what `zovkpopup_show_popup` would select now, and why. Shows nothing.
    /// Any thread; the same holds for all functions of an explanation. The caller frees
    /// `*explanation`.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explain")]
    public static extern int Explain([MarshalAs(UnmanagedType.LPUTF8Str)] string scene, ulong sceneType, out IntPtr explanation);

    /// <summary>Returns a sentence about the whole request. NULL for NULL.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explanation_sentence")]
    public static extern IntPtr ExplanationSentence(IntPtr explanation);

    /// <summary>Returns the number of popups that the selection examined. 0 for NULL.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explanation_popup_count")]
    public static extern UIntPtr ExplanationPopupCount(IntPtr explanation);

    /// <summary>Fills `popup` with the popup at `index`, counted from 0, in the order of
    /// examination. Set `popup->size` before the call.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explanation_popup")]
    public static extern int ExplanationPopup(IntPtr explanation, UIntPtr index, ref ExplainedPopup popup);

    /// <summary>Frees the explanation and its texts.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_explanation_free")]
    public static extern void ExplanationFree(IntPtr explanation);

    /// <summary>Opens a window and begins to load its page. On failure `*window` is set to NULL.
    /// Handlers that are registered before the next pump miss no message.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_open")]
    public static extern int WebWindowOpen(ref WebWindowSettings settings, out IntPtr window);

    /// <summary>Closes the window and releases its callbacks and handlers. None of them is called
    /// any more; only the results of scripts that still run are reported, as errors. The handle
    /// stays valid. May be called twice, and within any callback of the window.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_close")]
    public static extern int WebWindowClose(IntPtr window);

    /// <summary>Closes the window if it is open, and frees the handle. May be called after the
    /// host was shut down, and within any callback of the window.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_free")]
    public static extern void WebWindowFree(IntPtr window);

    /// <summary>Returns false after the window was closed, after a failure, and after the host
    /// was shut down.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_is_open")]
    [return: MarshalAs(UnmanagedType.I1)]
    public static extern bool WebWindowIsOpen(IntPtr window);

    /// <summary>Loads the page again.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_reload")]
    public static extern int WebWindowReload(IntPtr window);

    /// <summary>Runs a script in the page. `result` may be NULL. It is called once, with an error
    /// if the window closes first. It is not called if this call fails or the host is shut down
    /// first.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_evaluate")]
    public static extern int WebWindowEvaluate(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string script, ScriptResult result, IntPtr user, Destroy destroy);

    /// <summary>Answers the page; NULL answers without a value. Works once: a second call returns
    /// ZOVKPOPUP_ERROR_STATE. After ZOVKPOPUP_ERROR_JSON the handle can still answer. It is no
    /// error if the page is gone or wants no answer; the answer is then dropped. Any thread, one
    /// at a time.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_response_send")]
    public static extern int ResponseSend(IntPtr response, [MarshalAs(UnmanagedType.LPUTF8Str)] string json);

    /// <summary>Frees the handle. Any thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_response_free")]
    public static extern void ResponseFree(IntPtr response);

    /// <summary>Registers a handler that the page may call by name. It replaces an earlier
    /// handler of that name.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_register_handler")]
    public static extern int WebWindowRegisterHandler(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string name, Handler handler, IntPtr user, Destroy destroy);

    /// <summary>Removes a handler.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_remove_handler")]
    public static extern int WebWindowRemoveHandler(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string name);

    /// <summary>Calls a handler of the page. `json` may be NULL for no data, and `answer` NULL
    /// for no answer. `answer` is called at most once. It is kept until the page answers or is
    /// left, or the window closes.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_call_handler")]
    public static extern int WebWindowCallHandler(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string name, [MarshalAs(UnmanagedType.LPUTF8Str)] string json, Answer answer, IntPtr user, Destroy destroy);

    /// <summary>Sends data without naming a handler. The page warns on its console that it has no
    /// handler for it.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_send")]
    public static extern int WebWindowSend(IntPtr window, [MarshalAs(UnmanagedType.LPUTF8Str)] string json, Answer answer, IntPtr user, Destroy destroy);

    /// <summary>Drops callbacks that wait for the page, and holds messages back until the page
    /// asks for the bridge. Call it before a reload that must not lose messages.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_reset_bridge")]
    public static extern int WebWindowResetBridge(IntPtr window);

    /// <summary>Sends the messages that were held back, without waiting for the page to
    /// ask.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_send_held")]
    public static extern int WebWindowSendHeld(IntPtr window);

    /// <summary>Makes the page handle messages at once. Use it only for pages that open no
    /// dialogs.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_web_window_disable_alert_box_safety_timeout")]
    public static extern int WebWindowDisableAlertBoxSafetyTimeout(IntPtr window);

    /// <summary>Writes the traffic of all bridges to the log from now on. Each message is cut off
    /// after `longest_message` characters; a negative number means no limit. Any
    /// thread.</summary>
    [DllImport(Library, EntryPoint = "zovkpopup_log_bridges")]
    public static extern int LogBridges(int longestMessage);

  }
}
