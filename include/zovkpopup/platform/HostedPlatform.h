#pragma once

#include <chrono>
#include <memory>
#include <string>

#include <zovkpopup/HostSettings.h>
#include <zovkpopup/platform/GamePad.h>
#include <zovkpopup/platform/Platform.h>

namespace zovk {

/// A platform that a host drives. Make, pump and shut it down on one thread, the main thread. The
/// maker owns it. The host's callbacks come from `pump`.
class HostedPlatform {
 public:
  virtual ~HostedPlatform() = default;
  virtual Platform& interfaces() = 0;
  /// Returns the log of the interfaces, for code that may write to it after the platform is gone.
  virtual std::shared_ptr<PlatformLog> sharedLog() const = 0;
  /// Runs tasks, timers and events that are due, for at most `budget`, and never waits. A task that
  /// has begun is finished; the rest runs next time.
  virtual void pump(std::chrono::microseconds budget) = 0;
  /// Returns a descriptor that is readable when a pump has something to do; -1 if the platform has
  /// none.
  virtual int pollDescriptor() const = 0;
  /// Reports that the game's window took the keyboard. Not needed with `nativeWindow`.
  virtual void gameWindowDidBecomeKey() = 0;
  /// Reports that the game's window lost the keyboard, perhaps to a popup.
  virtual void gameWindowDidResignKey() = 0;
  /// Passes a press of a game pad to the front popup; has no effect if there is none. The names are
  /// the labels of the pad's buttons for press and leave. By default pads have no effect.
  virtual void gamePadDidPress(ZOVKPopupGamePad /*press*/, const std::string& /*pressName*/,
                               const std::string& /*leaveName*/) {}
  /// Reports the size of the game's window in logical pixels. Not needed on platforms that see it
  /// themselves.
  virtual void gameWindowDidResize(int /*width*/, int /*height*/) {}
  /// Ends threads and helper processes within two seconds. May be repeated. Nothing is called back
  /// afterwards.
  virtual void shutDown() = 0;
};

/// Makes the platform that was linked in; returns null if there is none.
std::shared_ptr<HostedPlatform> makeDefaultPlatform(const ZOVKPopupHostSettings& settings);

}  // namespace zovk
