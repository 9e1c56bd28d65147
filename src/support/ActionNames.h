#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "zovkpopup/Result.h"

/// The texts of "action" in pages' posts and in reports.
namespace zovk::actions {

inline constexpr std::string_view kError = "error";
inline constexpr std::string_view kSkip = "skip";
inline constexpr std::string_view kCommit = "commit";
inline constexpr std::string_view kCancel = "cancel";
inline constexpr std::string_view kConfirm = "confirm";
inline constexpr std::string_view kReject = "reject";

/// Returns the action of a result, a `ZOVKPopupResult` as a number. Throws std::out_of_range for
/// other numbers.
inline std::string_view ofResult(std::int32_t result) {
  constexpr std::array kNames = {kError, kSkip, kCommit, kCancel};
  return kNames.at(static_cast<std::size_t>(result) -
                   static_cast<std::size_t>(ZOVKPopupResultError));
}

}  // namespace zovk::actions
