#pragma once

#include <cstdint>

namespace zovk {

/// How a request to show popups ended.
enum ZOVKPopupResult : std::int32_t {
  /// Nothing was shown, or what was shown could not be seen to its end.
  ZOVKPopupResultError = -1,
  /// The player closed the popup, or there was nothing left to show.
  ZOVKPopupResultSkip = 0,
  /// The player agreed.
  ZOVKPopupResultCommit = 1,
  /// The player refused.
  ZOVKPopupResultCancel = 2,
};

}  // namespace zovk
