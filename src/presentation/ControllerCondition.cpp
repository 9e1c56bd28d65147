#include "presentation/ZOVKPopupViewController.h"
#include "record/PlayerRequest.h"

namespace zovk {

void ZOVKPopupViewController::queryConditionPopup(const PopupPointer& popup) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::queryConditionPopup");
  debug("Query condition Popup");
  const auto network = std::make_shared<ZOVKPopupNetwork>(platform_->urlSession);
  network->startRequest(
      ZOVKPopupNetwork::kPost, playerRequest(popup->check_url, player_, *popup),
      [self = shared_from_this(), popup](bool success, const std::optional<std::string>& data) {
        self->handleConditionAnswer(popup, success, data);
      });
}

// Runs on any thread. The address is made at once, of the popup that is on screen now; the rest is
// put off to the main queue.
void ZOVKPopupViewController::handleConditionAnswer(const PopupPointer& asked, bool success,
                                                    const std::optional<std::string>& data) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::queryConditionPopup");
  debug("Query condition Popup result:%d, respData length:%d", success, data ? data->size() : 0);
  if (!success || !data || data->empty()) {
    logError("Query condition Popup request failed");
    notifyNotWanted(asked, "condition_failed", "Its service, asked again, gave no answer.");
    return showPopup();
  }
  debug("Query condition Popup request success");
  boost::json::object extra;
  if (!parseCondition_(data, &extra)) {
    debug("No need to show condition Popup");
    notifyNotWanted(asked, "condition_refused",
                    "Its service, asked again, does not want it to be shown.");
    return showPopup();
  }
  debug("Need to show condition Popup");
  const PopupPointer current = currentModel();
  if (current != nullptr) loadPopupUri(current, getLoadUri(current->uri, extra));
}

}  // namespace zovk
