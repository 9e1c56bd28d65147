#pragma once

#include <cstdint>

namespace zovk {

/// The ways in which a request to show popups can end.
enum ZOVKPopupResult : std::int32_t {
  /// Nothing was shown, or a popup failed before it was answered.
  ZOVKPopupResultError = -1,
  /// The player closed the popup, or nothing was left to show.
  ZOVKPopupResultSkip = 0,
  /// The player agreed.
  ZOVKPopupResultCommit = 1,
  /// The player refused.
  ZOVKPopupResultCancel = 2,
};

}  // namespace zovk
