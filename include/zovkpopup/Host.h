#pragma once

#include <chrono>
#include <memory>
#include <string>

#include <zovkpopup/Export.h>
#include <zovkpopup/Hooks.h>
#include <zovkpopup/HostSettings.h>
#include <zovkpopup/platform/GamePad.h>

namespace zovk {

class HostedPlatform;

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
