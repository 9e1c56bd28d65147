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

/// How the helper program is started, and how long it is waited for.
struct HelperLauncher {
  struct Started {
    UniqueFd socket;                       ///< The game's end; none when the start failed.
    std::optional<HelperProcess> process;  ///< Absent when the other end is no process.
    std::string error;                     ///< Why the start failed.
  };
  /// Returns at once, without waiting for the helper.
  std::function<Started()> start;
  /// A helper that is not ready by then counts as dead.
  std::chrono::milliseconds readyTimeout = std::chrono::seconds(20);
  /// How often a helper is pinged while it shows something, and how long it may stay silent then.
  std::chrono::milliseconds pingInterval{500};
  std::chrono::milliseconds answerTimeout = std::chrono::seconds(5);
  /// After so long with nothing shown the helper gives up what it holds ready for the next page,
  /// and after as long as the second says it ends.
  std::chrono::milliseconds restAfter = std::chrono::minutes(1);
  std::chrono::milliseconds endAfter = std::chrono::minutes(10);
  /// The time by which silence and pauses between starts are measured.
  std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
  /// So long may the helper take to end by itself at shutdown.
  std::chrono::milliseconds endTimeout = std::chrono::seconds(1);
  /// What may wait for a helper that does not read.
  std::size_t maximumPendingBytes = std::size_t{256} * 1024 * 1024;
};

/// Starts the helper program of the settings, or the one that is installed with the library.
HelperLauncher helperProcessLauncher(const ZOVKPopupHostSettings& settings);

}  // namespace zovk
