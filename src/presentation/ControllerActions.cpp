#include "presentation/ActionScope.h"
#include "presentation/PopupEvent.h"
#include "presentation/ZOVKPopupViewController.h"
#include "support/ActionNames.h"
#include "text/JsonRead.h"
#include "text/ZOVKPopupCommonTool.h"
#include "zovkpopup/Result.h"

namespace zovk {
namespace {

boost::json::object resultRecordOf(std::int32_t action, const boost::json::value& message) {
  boost::json::object record;
  record["action"] = actions::ofResult(action);
  record["msg"] = message.is_string() ? message : boost::json::value("");
  return record;
}

// Returns a text unchanged, anything else as JSON.
std::string messageText(const std::optional<boost::json::value>& message) {
  if (!message) return "(null)";
  return message->is_string() ? std::string(message->get_string()) : logText(*message);
}

}  // namespace

void ZOVKPopupViewController::handleCallbackMessage(std::int32_t action,
                                                    const boost::json::value& callbackMessage) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::handleCallbackMessage");
  const ActionScope scope(*this);
  if (tornDown_) return;
  const boost::json::object record = resultRecordOf(action, callbackMessage);
  if (action == ZOVKPopupResultCommit) return commit(record);
  const std::string text = ZOVKPopupCommonTool::dictionaryToJsonString(record);
  notifyAnswered(action, text);
  if (action == ZOVKPopupResultSkip) return skip(text);
  debug("the user operation is: %d ,msg: %@", action, text);
  // A cancel is reported at once, even with popups still waiting: the run ends with this action,
  // and they are not seen.
  callComplete(action, text);
  finishShow();
}

void ZOVKPopupViewController::skip(const std::string& resultText) {
  if (popupArr_.empty()) callComplete(ZOVKPopupResultSkip, resultText);
  finishShow();
}

void ZOVKPopupViewController::commit(const boost::json::object& resultRecord) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::handleCallbackMessage");
  const PopupPointer current = currentModel();
  const std::string reportUrl = current != nullptr ? current->report_url : "";
  if (reportUrl.empty()) {
    // The run ends here, without the next popup: a popup whose commit cannot be reported does not
    // count as shown.
    debug("The currentModel report_url is illegal: %@, report ending", reportUrl);
    if (current != nullptr) {
      notifyNotShown(current, "report_missing",
                     "It was committed, but has no address to report to.");
    }
    return callComplete(ZOVKPopupResultError, "");
  }
  notifyAnswered(ZOVKPopupResultCommit, ZOVKPopupCommonTool::dictionaryToJsonString(resultRecord));
  startReportData(resultRecord);
  ZPLogger::writeDirectly("the num of popupCache is " + std::to_string(popupArr_.size()));
  if (popupArr_.empty()) {
    callComplete(ZOVKPopupResultCommit, ZOVKPopupCommonTool::dictionaryToJsonString(resultRecord));
  }
  finishShow();
}

void ZOVKPopupViewController::startReportData(const boost::json::object& resultRecord) {
  const PopupPointer current = currentModel();
  if (current == nullptr) return;
  ZOVKPopupUrlParams params = playerRequest(current->report_url, player_, *current);
  params.postInfo->emplace("data", ZOVKPopupCommonTool::dictionaryToJsonString(resultRecord));
  const auto network = std::make_shared<ZOVKPopupNetwork>(platform_->urlSession);
  network->startRequest(
      ZOVKPopupNetwork::kPost, params, [](bool success, const std::optional<std::string>& data) {
        constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::startReportData");
        debug("Report user data result:%d, respData length:%d", success, data ? data->size() : 0);
        if (success && data) {
          debug("Report user data request success");
        } else {
          logError("Report user data request failed");
        }
      });
}

void ZOVKPopupViewController::handleWebViewJsMessage(
    std::int32_t action, const std::optional<boost::json::value>& jsMessage) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::handleWebViewJsMessage");
  debug("Handle webview js message, action:%d message:%@", action,
        [&] { return messageText(jsMessage); });
  if (jsMessage && jsMessage->is_object())
    return handleCallbackMessage(ZOVKPopupResultCommit, nullptr);
  if (jsMessage && jsMessage->is_string()) {
    boost::json::error_code error;
    const auto parsed = readJson(jsMessage->get_string(), error);
    if (!error && parsed.is_object()) return handleCallbackMessage(ZOVKPopupResultCommit, parsed);
  }
  logError("Param jsMessage illegal");
}

void ZOVKPopupViewController::refreshButtonClicked() {
  const PopupPointer loaded = modelToRefresh_.get();
  if (loaded != nullptr) loadPopupUri(loaded, uriToRefresh_);
}

}  // namespace zovk
