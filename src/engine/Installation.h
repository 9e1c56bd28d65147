#pragma once

#include <memory>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// The platform under the popups, at one moment. Any thread.
struct Installation {
  std::shared_ptr<HostedPlatform> platform;  ///< Null before set-up and after shutting down.
  bool wasShutDown = false;

  static Installation now();
};

/// Puts the popups on a platform. The calling thread becomes the main thread. None may be
/// installed.
void install(std::shared_ptr<HostedPlatform> platform);

/// Does the same with the platform that was linked in, if there is one, for a game that uses the
/// popups without setting a host up. Has no effect while a platform is set or after one was shut
/// down.
void installLinked();

/// Takes the popups off their platform for good, until `install`. The platform stays
/// `currentPlatform` for what has to be ended.
void uninstall();

}  // namespace zovk
