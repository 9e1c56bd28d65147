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

/// Connects the popups to a game's loop. Call everything on the main thread: the thread that calls
/// `setUp`, or that makes the first call of `ZOVKPopup` in a game without `setUp`. Callbacks come
/// from `pump`, except those that come at once from within a call.
class ZOVKPOPUP_API ZOVKPopupHost {
 public:
  /// Sets the host up. Call it before everything else, and again only after `shutDown`. Returns
  /// false and logs one error line if the host is already set up, if popups are already in use, or
  /// if no platform is linked in.
  static bool setUp(const ZOVKPopupHostSettings& settings);
  /// Sets the host up with the given platform. Fails as the other form does.
  static bool setUp(std::shared_ptr<HostedPlatform> platform);

  /// Runs the tasks that are due, and returns without waiting. Call it once a frame. After `budget`
  /// no further task is begun; the next call runs the rest. Does nothing if the host is not set up,
  /// or within a callback. Callbacks must not throw.
  static void pump(std::chrono::microseconds budget = std::chrono::milliseconds(2));

  /// Returns a descriptor that is readable when `pump` has something to do, for hosts with an event
  /// loop; -1 if the host is not set up. The library owns it and closes it in `shutDown`.
  static int pollDescriptor();

  /// These report that the game's window took the keyboard, or lost it. A popup that is up takes
  /// the keyboard back from the game, but not from other programs. Not needed on X11 with
  /// `nativeWindow`.
  static void gameWindowDidBecomeKey();
  static void gameWindowDidResignKey();

  /// Passes a press of a game pad to the front popup or web window, whether or not that has the
  /// keyboard. Has no effect if there is none. The game reads its pads and decides what a press
  /// means. Directions move the focus among the page's links, fields and buttons. The library does
  /// not repeat a direction that is held. `pressName` and `leaveName` are the labels of the
  /// player's buttons; a line at the foot of the popup shows what each button does.
  static void gamePadDidPress(ZOVKPopupGamePad press, const std::string& pressName = "A",
                              const std::string& leaveName = "B");

  /// Reports the size of the game's window in logical pixels, so that popups have the same size. On
  /// Wayland, call it after `setUp` and whenever the size changes. On X11 the library sees the size
  /// itself.
  static void gameWindowDidResize(int width, int height);

  /// Sets the hooks and replaces earlier ones. `pump` calls them. They are copied, stay until
  /// `shutDown`, and may call anything. Returns false and logs one error line after `shutDown`, and
  /// on a thread other than the main thread.
  static bool setHooks(const ZOVKPopupHooks& hooks);

  /// Holds popups back, for example during a cut-scene or a match. Requests are accepted, but wait.
  /// A popup that is on screen stays, and so does the rest of its request. May be repeated. Returns
  /// false as `setHooks` does.
  static bool holdPopups();
  /// Ends holding back. Waiting requests are shown first. May be repeated. Returns false as
  /// `setHooks` does.
  static bool releasePopups();

  /// Ends everything within two seconds. An open popup closes, and its callback is not called. May
  /// be called twice. Later calls of `ZOVKPopup` log an error, and show requests end with -1.
  static void shutDown();
};

}  // namespace zovk
