#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace zovk {

/// What has happened to one popup. A game may pass it on to its analytics.
struct ZOVKPopupEvent {
  enum class Kind {
    kShown,     ///< Its page has loaded, on screen.
    kAnswered,  ///< The player answered or closed it: see `result` and `message`.
    kNotShown,  ///< It was not shown, or not until an answer: see `reason` and `sentence`.
  };
  Kind kind = Kind::kNotShown;
  std::string scene;         ///< The popup's scene; the scene of the request if there is no popup.
  std::int32_t pop_id = 0;   ///< 0 if there is no popup.
  std::int32_t result = -1;  ///< If answered: skip, commit or cancel. Else -1.
  std::string message;       ///< If answered: JSON {"action":…,"msg":…}. Else empty.
  /// If not shown: the reason in one word. Else empty. It is a verdict of
  /// `ZOVKPopupExplainedPopup`, or one of these: "no_popup" if no popup is defined for the request;
  /// "policy_not_needed"; "condition_refused" and "condition_failed" if the service of a
  /// conditional popup refused it or gave no answer; "page_failed" if the page did not load;
  /// "display_failed" if popups cannot be displayed; "request_ended" if the request ended before
  /// its turn; "skipped_over" if an answer to the popup before it came late or twice and ended its
  /// turn; "report_missing" if the page committed and the popup has no address to report to.
  std::string reason;
  std::string sentence;  ///< The reason in plain English. Else empty.
};

/// Callbacks for the time in which popups cover the game, so that it can pause its sound and its
/// input, and for each popup. Popups that follow one another at once count as one such time. Each
/// may be empty. They must not throw.
struct ZOVKPopupHooks {
  /// Called before the first popup comes on screen.
  std::function<void()> popupsWillAppear;
  /// Called after the last popup is gone, but not when the host is shut down.
  std::function<void()> popupsDidDisappear;
  /// Called for each popup of a request that was shown, answered, or not shown; not for popups that
  /// a shut-down ends. Always called from `pump`, in the order of the events. The result of a
  /// request comes before the event of the same answer. The event is valid until the function
  /// returns. While this is set, each request asks the selection a second time, for the reasons.
  std::function<void(const ZOVKPopupEvent& event)> popupEvent{};
};

}  // namespace zovk
