#include <utility>

#include "presentation/PopupEvent.h"
#include "presentation/ZOVKPopupViewController.h"

namespace zovk {

// Any thread.
void ZOVKPopupViewController::notify(ZOVKPopupEvent event) const {
  if (eventListener_) eventListener_(std::move(event));
}

void ZOVKPopupViewController::notifyShown() {
  const PopupPointer current = currentModel();
  if (current == nullptr || std::exchange(shownIsNotified_, true)) return;
  notify(eventOf(*current, ZOVKPopupEvent::Kind::kShown));
}

void ZOVKPopupViewController::notifyAnswered(std::int32_t action, const std::string& resultText) {
  const PopupPointer current = currentModel();
  if (current == nullptr || std::exchange(answerIsNotified_, true)) return;
  ZOVKPopupEvent event = eventOf(*current, ZOVKPopupEvent::Kind::kAnswered);
  event.result = action;
  event.message = resultText;
  notify(std::move(event));
}

// The popup stays on screen with its buttons, and the page may still load when it is refreshed.
void ZOVKPopupViewController::notifyPageFailed(const std::string& error) {
  const PopupPointer current = currentModel();
  if (current == nullptr || shownIsNotified_ || std::exchange(failureIsNotified_, true)) return;
  notify(notShown(*current, "page_failed", "Its page did not load: " + error));
}

// Any thread.
void ZOVKPopupViewController::notifyNotWanted(const char* reason, const char* sentence) const {
  const PopupPointer current = currentModel();
  if (current != nullptr) notify(notShown(*current, reason, sentence));
}

void ZOVKPopupViewController::notifyRequestEnded() const {
  for (const PopupPointer& waiting : popupArr_) notify(requestEnded(*waiting));
}

// For the popup on screen, unless it was answered, and for those that wait.
void ZOVKPopupViewController::notifyDisplayFailed(const std::string& error) {
  const std::string sentence = "Popups cannot be displayed: " + error;
  const PopupPointer current = currentModel();
  if (current != nullptr && !std::exchange(answerIsNotified_, true)) {
    notify(notShown(*current, "display_failed", sentence));
  }
  for (const PopupPointer& waiting : popupArr_) {
    notify(notShown(*waiting, "display_failed", sentence));
  }
}

}  // namespace zovk
