#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <zovkpopup/platform/GamePad.h>
#include <zovkpopup/platform/GamePicture.h>
#include <zovkpopup/platform/Platform.h>

namespace zovk {

/// What a host may say about itself. Everything has a default.
struct PlatformSettings {
  /// Names the application's own data; letters, digits, dots, dashes and underscores. By default
  /// the name of the program.
  std::string applicationId;
  /// Where the host's resources lie; by default beside the program.
  std::string resourceDirectory;
  /// The application's home directory; by default below the user's data directory.
  std::string dataDirectory;
  /// The helper program that shows the pages; by default the one installed with the library.
  std::string helperPath;
  /// The X11 window of the game, 0 for none: where popups are placed, and where focus returns to.
  std::uint64_t nativeWindow = 0;
  /// A PEM file with certificates that servers may have beside those the system trusts.
  std::string certificateAuthority;
  /// Takes the log lines instead of standard error; called from any thread.
  std::function<void(std::string_view line)> logSink;
  /// How many megabytes (of 1,048,576 bytes) a page's process may take before it is ended.
  std::uint32_t pageMemory = 1024;
  /// How popups are drawn, in any case: "auto", "look", "hardware", "software" or "plain". Empty is
  /// "auto".
  std::string drawing;
  /// The game's window as text, "x11:NUMBER" or "wayland:HANDLE"; counts more than `nativeWindow`.
  std::string gameWindow{};
  /// The kind of window that popups have, in any case: "auto" or "fullscreen". Empty is "auto".
  std::string popupWindow{};
  /// Asked for the game's last frame where nothing can be seen through popups; may be empty. On the
  /// main thread, from a pump or a call that shows something; it must not call the library.
  ZOVKPopupBackdrop backdrop{};
  /// Whether the helper program writes to its standard output, which is the host's, what pages tell
  /// their console: for tools.
  bool pageConsole = false;
  /// How many seconds the interface stays ready for the next popup when nothing is shown.
  std::uint32_t readySeconds = 60;
};

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
std::shared_ptr<HostedPlatform> makeDefaultPlatform(const PlatformSettings& settings);

}  // namespace zovk
