#include "engine/ConditionAnswer.h"
#include "engine/ZOVKPopupManager.h"
#include "network/ZOVKPopupNetwork.h"
#include "record/PlayerRequest.h"
#include "text/JsonRead.h"

namespace zovk {

void ZOVKPopupManager::queryConditionPopup(const PopupPointer& popup,
                                           const CallbackPointer& complete) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::queryConditionPopup");
  debug("Query condition Popup");
  const StartedGame game = game_.get();
  const PlayerIdentity player{game.gameID, game.gameKey, loginState_};
  const auto network = std::make_shared<ZOVKPopupNetwork>(platform_->urlSession);
  network->startRequest(ZOVKPopupNetwork::kPost, playerRequest(popup->check_url, player, *popup),
                        [self = shared_from_this(), popup, complete](
                            bool success, const std::optional<std::string>& data) {
                          self->handleConditionAnswer(popup, complete, success, data);
                        });
}

void ZOVKPopupManager::handleConditionAnswer(const PopupPointer& popup,
                                             const CallbackPointer& complete, bool success,
                                             const std::optional<std::string>& data) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::queryConditionPopup");
  debug("Query condition Popup result:%d, respData length:%d", success, data ? data->size() : 0);
  if (success && data) {
    debug("Query condition Popup request success");
    if (parseConditionPopupResp(data, nullptr)) {
      debug("Need to show condition Popup");
      cachePopup({popup}, complete);
      return showPopup();
    }
    debug("No need to show condition Popup");
    notifyNotShown(*popup, "condition_refused", "Its service does not want it to be shown.");
  } else {
    logError("Query condition Popup request failed");
    notifyNotShown(*popup, "condition_failed", "Its service gave no answer.");
  }
  doCallback(complete, -1, "");
}

bool ZOVKPopupManager::parseConditionPopupResp(const std::optional<std::string>& data,
                                               boost::json::object* extraJson) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::parseConditionPopupResp");
  if (!data || data->empty()) return false;
  boost::json::error_code error;
  const boost::json::value answer = readJson(*data, error);
  debug("jsonInfo:%@", [&] { return error ? std::string("(null)") : logText(answer); });
  if (error) return false;
  const auto extra = wantedPopupExtra(answer);
  if (!extra) return false;
  if (extraJson != nullptr) {
    for (const auto& [key, value] : *extra) (*extraJson)[key] = value;
  }
  return true;
}

}  // namespace zovk
