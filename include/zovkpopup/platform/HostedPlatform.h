#pragma once

#include <chrono>
#include <memory>
#include <string>

#include <zovkpopup/HostSettings.h>
#include <zovkpopup/platform/GamePad.h>
#include <zovkpopup/platform/Platform.h>

namespace zovk {

/// A platform that a host drives. Made, pumped and shut down on one thread, the main thread.
/// Whoever makes it owns it. `pump` runs what is due and returns; the host's callbacks come from
/// it.
class HostedPlatform {
 public:
  virtual ~HostedPlatform() = default;
  virtual Platform& interfaces() = 0;
  /// The log of the interfaces, for those who may write to it after the platform is gone.
  virtual std::shared_ptr<PlatformLog> sharedLog() const = 0;
  /// Runs tasks, timers and events that are due, for `budget` at most, and never waits. A task
  /// that has begun is finished; what is left runs next time.
  virtual void pump(std::chrono::microseconds budget) = 0;
  /// Readable when a pump would find something to do; -1 when the platform has none.
  virtual int pollDescriptor() const = 0;
  /// Tells that the game's own window took the keyboard. Hosts with a `nativeWindow` need not.
  virtual void gameWindowDidBecomeKey() = 0;
  /// Tells that the game's own window lost the keyboard, perhaps to a popup.
  virtual void gameWindowDidResignKey() = 0;
  /// Hands a press of a game pad to the popup in front; nothing happens when there is none. The
  /// names are those of the pad's buttons that press and leave. By default pads have no effect.
  virtual void gamePadDidPress(ZOVKPopupGamePad /*press*/, const std::string& /*pressName*/,
                               const std::string& /*leaveName*/) {}
  /// Tells how large the game's own window is, in logical pixels. Platforms that see it by
  /// themselves need not hear it.
  virtual void gameWindowDidResize(int /*width*/, int /*height*/) {}
  /// Ends threads and helper processes within two seconds. Repeatable; nothing is called back
  /// afterwards.
  virtual void shutDown() = 0;
};

/// The platform that was linked in; null when there is none.
std::shared_ptr<HostedPlatform> makeDefaultPlatform(const ZOVKPopupHostSettings& settings);

}  // namespace zovk
