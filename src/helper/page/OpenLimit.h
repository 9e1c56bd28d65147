#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "support/LineLimit.h"

namespace zovk::helper {

/// Limits how many addresses pages may open outside. Each click or key of the player allows a few,
/// for a few seconds. Without one, a web view's pages may open one in all. That is enough for a
/// page that only leads elsewhere, and too little for one that floods the desktop.
class OpenLimit {
 public:
  using Time = std::chrono::steady_clock::time_point;
  /// A link that asks for a new window is opened twice by one click.
  static constexpr int kForEachInput = 2;
  static constexpr std::chrono::seconds kInputCounts{10};

  /// Reports that the player clicked, touched or pressed a key.
  void playerActed(Time now);
  /// Reports that the game made a web view.
  void webViewMade() { freeOne_ = true; }
  /// Returns whether an address may be opened now; if so, counts it as opened.
  bool take(Time now);
  /// Returns the log line for an address that was not opened; nothing if enough lines were written.
  std::optional<std::string> refusalLine();

 private:
  Time lastInput_;
  int left_ = 0;
  bool freeOne_ = false;
  LineLimit lines_;
};

}  // namespace zovk::helper
