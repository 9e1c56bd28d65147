#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include "platform/linux/helper/HelperProcess.h"
#include "support/UniqueFd.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// How to start the helper program, and how long to wait for it.
struct HelperLauncher {
  struct Started {
    UniqueFd socket;                       ///< The game's end; none if the start failed.
    std::optional<HelperProcess> process;  ///< Absent if the other end is not a process.
    std::string error;                     ///< Why the start failed.
  };
  /// Starts a helper and returns at once, without waiting for it.
  std::function<Started()> start;
  /// A helper that is not ready after this time counts as dead.
  std::chrono::milliseconds readyTimeout = std::chrono::seconds(20);
  /// The interval of pings while a helper shows something, and how long it may stay silent then.
  std::chrono::milliseconds pingInterval{500};
  std::chrono::milliseconds answerTimeout = std::chrono::seconds(5);
  /// How long after the last window the helper makes way for one that is not greeted, and how long
  /// after that this one ends.
  std::chrono::milliseconds restAfter = std::chrono::minutes(1);
  std::chrono::milliseconds endAfter = std::chrono::minutes(10);
  /// The clock for silence and for pauses between starts.
  std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
  /// The time that the helper may take to end at shutdown before it is killed.
  std::chrono::milliseconds endTimeout = std::chrono::seconds(1);
  /// The most bytes that may wait for a helper that does not read.
  std::size_t maximumPendingBytes = std::size_t{256} * 1024 * 1024;
};

/// Returns a launcher for the helper program of the settings, or for the one that is installed with
/// the library.
HelperLauncher helperProcessLauncher(const ZOVKPopupHostSettings& settings);

}  // namespace zovk
