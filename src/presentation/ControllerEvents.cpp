#include <utility>

#include "presentation/PopupEvent.h"
#include "presentation/ZOVKPopupViewController.h"

namespace zovk {

// Any thread.
void ZOVKPopupViewController::notify(ZOVKPopupEvent event) const {
  if (eventListener_) eventListener_(std::move(event));
}

// Any thread. Returns whether the game has heard the end of this popup before.
bool ZOVKPopupViewController::accountFor(const PopupPointer& popup) {
  return accountedFor_.with([&popup](auto& popups) { return !popups.insert(popup).second; });
}

void ZOVKPopupViewController::notifyShown() {
  const PopupPointer current = currentModel();
  if (current == nullptr || std::exchange(shownIsNotified_, true)) return;
  notify(eventOf(*current, ZOVKPopupEvent::Kind::kShown));
}

void ZOVKPopupViewController::notifyAnswered(std::int32_t action, const std::string& resultText) {
  const PopupPointer current = currentModel();
  if (current == nullptr || std::exchange(answerIsNotified_, true)) return;
  accountFor(current);
  ZOVKPopupEvent event = eventOf(*current, ZOVKPopupEvent::Kind::kAnswered);
  event.result = action;
  event.message = resultText;
  notify(std::move(event));
}

// The popup stays on screen with its buttons, and the page may still load when it is refreshed.
void ZOVKPopupViewController::notifyPageFailed(const std::string& error) {
  const PopupPointer current = currentModel();
  if (current == nullptr || shownIsNotified_ || std::exchange(failureIsNotified_, true)) return;
  notifyNotShown(current, "page_failed", "Its page did not load: " + error);
}

// Any thread.
void ZOVKPopupViewController::notifyNotShown(const PopupPointer& popup, const std::string& reason,
                                             const std::string& sentence) {
  accountFor(popup);
  notify(notShown(*popup, reason, sentence));
}

// Any thread. By now another popup may be on screen, whose turn the answer ends.
void ZOVKPopupViewController::notifyNotWanted(const PopupPointer& asked, const char* reason,
                                              const char* sentence) {
  if (currentModel() == asked) notifyNotShown(asked, reason, sentence);
}

// An answer that comes twice, or a condition's answer that comes late, ends the turn of the popup
// that is on screen by then.
void ZOVKPopupViewController::notifySkippedOver() {
  const PopupPointer current = currentModel();
  if (current == nullptr || accountFor(current)) return;
  notify(notShown(*current, "skipped_over",
                  "An answer to the popup before it came late or twice, and ended its turn."));
}

void ZOVKPopupViewController::notifyRequestEnded() const {
  for (const PopupPointer& waiting : popupArr_) notify(requestEnded(*waiting));
}

// For the popup on screen, unless it was answered, and for those that wait.
void ZOVKPopupViewController::notifyDisplayFailed(const std::string& error) {
  const std::string sentence = "Popups cannot be displayed: " + error;
  const PopupPointer current = currentModel();
  if (current != nullptr && !std::exchange(answerIsNotified_, true)) {
    notifyNotShown(current, "display_failed", sentence);
  }
  for (const PopupPointer& waiting : popupArr_) {
    notify(notShown(*waiting, "display_failed", sentence));
  }
}

}  // namespace zovk
