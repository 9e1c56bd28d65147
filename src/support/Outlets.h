#pragma once

/// The names of the views and buttons of the two layouts, which the page controller binds and the
/// escape key presses.
namespace zovk::outlets {

inline constexpr const char* kBackground = "backgroundView";
inline constexpr const char* kContent = "contentView";
inline constexpr const char* kAnswers = "stackView";
inline constexpr const char* kReject = "rejectBtn";
inline constexpr const char* kConfirm = "confirmBtn";
inline constexpr const char* kLoneAnswer = "aloneConfirmStackView";
inline constexpr const char* kLoneConfirm = "centerConfirmBtn";
inline constexpr const char* kReturn = "returnBtn";
inline constexpr const char* kCross = "crossBtn";
inline constexpr const char* kRefresh = "refreshBtn";

}  // namespace zovk::outlets
