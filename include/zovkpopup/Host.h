#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <zovkpopup/Export.h>
#include <zovkpopup/Hooks.h>
#include <zovkpopup/platform/GamePad.h>
#include <zovkpopup/platform/GamePicture.h>

namespace zovk {

class HostedPlatform;

/// What a game may say about itself. Every member has a default.
struct ZOVKPopupHostSettings {
  /// Names the application's own data: letters, digits, dots, dashes, underscores. By default the
  /// program's name.
  std::string applicationId;
  /// Where the game's resources lie (absolute path); by default the program's own directory.
  /// The resource bundle "ZOVKPopupResource.bundle" is looked for there first, then beside the
  /// library.
  std::string resourceDirectory;
  /// The application's home directory; by default `$XDG_DATA_HOME/<applicationId>`.
  std::string dataDirectory;
  /// The helper program `zovkpopup-helper`; by default the one installed with the library.
  std::string helperPath;
  /// The X11 window of the game, 0 when it has none: popups cover it and give the focus back to it.
  std::uint64_t nativeWindow = 0;
  /// A PEM file (absolute path) with certificate authorities to trust beside the system's, for a
  /// popup service with a certificate of its own; by default none.
  std::string certificateAuthority;
  /// Takes the log lines, without line ends, instead of standard error. Called from any thread,
  /// also while other calls are under way; it must not call back into the library.
  std::function<void(std::string_view line)> logSink;
  /// How many megabytes (of 1,048,576 bytes) a page's process may take, 64 at least. It is looked
  /// at once a second; a process that has more is ended, and its page is loaded again.
  std::uint32_t pageMemory = 1024;
  /// How popups are drawn, in any case: "hardware", by the graphics processor; "software", without
  /// it; "plain", with the least memory, for pages that are opaque or stand still; "auto", the
  /// default, by the graphics processor where there is one; "look" is the same, but asks the
  /// graphics driver even where no device is seen. The player's environment variable
  /// `ZOVKPOPUP_DRAWING` goes before it. Hardware that fails is not tried again.
  std::string drawing;
  /// The game's window as text, where it is known to the display system: "x11:NUMBER", the same as
  /// `nativeWindow`, or "wayland:HANDLE", what the compositor's `zxdg_exporter` gave for it. Popups
  /// then stand over that window. By default what `nativeWindow` says.
  std::string gameWindow{};
  /// The kind of window that popups have, in any case: "auto", the default, stands over the game's
  /// window wherever the display lets it; "fullscreen" takes the whole screen, for games that have
  /// a screen to themselves. The player's environment variable `ZOVKPOPUP_WINDOW` goes before it.
  std::string popupWindow{};
  /// Gives the game's last frame, for the displays on which a popup hides the game: in kiosks,
  /// where no compositor blends windows, and where the game's window has no name on Wayland. It
  /// then lies beneath the page. Asked once when popups are about to cover the game and again after
  /// the popup has got another size, on the main thread; it must not call the library, nor throw.
  /// On other displays it is never asked. Without it what is behind a page is plain and dark.
  ZOVKPopupBackdrop backdrop{};
  /// How many seconds popups stay ready to come up at once when nothing is shown. After that the
  /// helper gives up what it held ready for the next page, and ten minutes later it ends. The next
  /// popup brings it back, and so does a `havePopup` that is true, which therefore had better be
  /// asked a second before.
  std::uint32_t readySeconds = 60;
};

/// Ties the popups to a game's loop. Every call belongs to one thread, the main thread: the one
/// that calls `setUp`, or the first call of `ZOVKPopup` where the game does without `setUp`.
/// Host callbacks that are not immediate come from `pump`.
class ZOVKPOPUP_API ZOVKPopupHost {
 public:
  /// Call once before anything else, and again only after `shutDown`. False, with one error line,
  /// when it was called before, when the popups are already in use, or when no platform is linked
  /// in.
  static bool setUp(const ZOVKPopupHostSettings& settings);
  /// The same with a platform of the host's own.
  static bool setUp(std::shared_ptr<HostedPlatform> platform);

  /// Runs what is due and returns; never waits. Call it once a frame. No task is begun after
  /// `budget` has passed; what is left is run by the next call. Does nothing when not set up, or
  /// when called from within a callback. Host callbacks must not throw.
  static void pump(std::chrono::microseconds budget = std::chrono::milliseconds(2));

  /// A descriptor that is readable when `pump` has something to do, for hosts with an event loop
  /// of their own; -1 when not set up. The library owns it, until `shutDown`.
  static int pollDescriptor();

  /// Tells that the game's own window took the keyboard, or lost it. A popup that is up takes the
  /// keyboard back from the game, but not from other programs. Games that gave `nativeWindow` on
  /// X11 need not.
  static void gameWindowDidBecomeKey();
  static void gameWindowDidResignKey();

  /// Hands a press of a game pad to the popup or web window in front, whether or not it has the
  /// keyboard; nothing happens when there is none. The game reads its pads, and says what players
  /// mean by a press: directions move the focus among the page's links, fields and buttons. A
  /// direction that is held is not repeated by the library.
  /// `pressName` and `leaveName` are what is written on the player's own buttons for that, for the
  /// line at the foot of the popup that says which button does what.
  static void gamePadDidPress(ZOVKPopupGamePad press, const std::string& pressName = "A",
                              const std::string& leaveName = "B");

  /// Tells how large the game's own window is, in logical pixels: on Wayland once after `setUp` and
  /// whenever it changes, so that popups have the same size. On X11 it is seen without.
  static void gameWindowDidResize(int width, int height);

  /// Calls the hooks around the time in which popups cover the game, from `pump`, in place of those
  /// that were set before. They are copied, stay until `shutDown`, and may call anything. False,
  /// with one error line, after `shutDown` and on another thread than the main thread.
  static bool setHooks(const ZOVKPopupHooks& hooks);

  /// Holds popups back, for a cut-scene or a match. Requests are taken as always, but wait; what is
  /// on screen stays, with the rest of its request. Popups are not held back unless asked for.
  /// Repeatable. False as for `setHooks`.
  static bool holdPopups();
  /// Lets them go on, with what has waited first. Repeatable. False as for `setHooks`.
  static bool releasePopups();

  /// Ends everything within two seconds: an open popup closes and its callback is not called.
  /// May be called twice. Later calls of `ZOVKPopup` log an error; show requests are answered -1.
  static void shutDown();
};

}  // namespace zovk
