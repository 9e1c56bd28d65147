#include "presentation/ZOVKPopupViewController.h"

#include <utility>

#include "presentation/ActionScope.h"
#include "presentation/PageAddress.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {

ZOVKPopupViewController::ZOVKPopupViewController(std::shared_ptr<Platform> platform,
                                                 ConditionParser parseCondition)
    : platform_(std::move(platform)),
      parseCondition_(std::move(parseCondition)),
      screen_(platform_) {}

void ZOVKPopupViewController::setLoginState(const std::string& gameID, const std::string& gameKey,
                                            std::shared_ptr<const LoginStateRecord> loginState) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::setLoginState");
  const ZOVKPopupLoginStateModel now = loginState->get();
  debug("Set state ID1:%@ ID2:%@ ID3:%d ID4:%@ ID5:%@, ID6:%@", gameID, gameKey, now.channelID,
        now.openID, now.token, now.jwtToken);
  player_ = {gameID, gameKey, std::move(loginState)};
}

void ZOVKPopupViewController::showPopup(const PopupList& popups, Window* window,
                                        const Complete& complete) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::showPopup");
  debug("Popup count:%d", popups.size());
  if (!popups.empty()) popupArr_.assign(popups.begin(), popups.end());
  if (complete) complete_ = complete;
  if (window == nullptr) return;
  window_ = window;
  window->setRootViewController(shared_from_this());
}

PopupPointer ZOVKPopupViewController::getPopupModel() {
  if (popupArr_.empty()) return nullptr;
  PopupPointer next = popupArr_.front();
  popupArr_.pop_front();
  return next;
}

void ZOVKPopupViewController::showPopup() {
  platform_->mainQueue.async([self = shared_from_this()] { self->showNextPopup(); });
}

void ZOVKPopupViewController::showNextPopup() {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::showPopup");
  const ActionScope scope(*this);
  notifySkippedOver();
  PopupPointer next = getPopupModel();
  if (next == nullptr) return callComplete(ZOVKPopupResultSkip, "");
  debug("Start show %@", next->scene);
  currentModel_.set(next);
  pageHangs_ = false;  // the next page gets a process that answers
  shownIsNotified_ = false;
  failureIsNotified_ = false;
  answerIsNotified_ = false;
  applyButtonRule();
  if (window_ != nullptr) window_->setNeedsUpdateConstraints();
  if (next->pop_freq == kPopFreqConditional) {
    queryConditionPopup(next);
  } else {
    loadPopupUri(next, "");
  }
}

std::string ZOVKPopupViewController::getLoadUri(const std::string& uri,
                                                const boost::json::object& extraJsonDic) const {
  return addressWithExtra(uri, extraJsonDic);
}

void ZOVKPopupViewController::loadPopupUri(const PopupPointer& popup, const std::string& uriFinal) {
  modelToRefresh_.set(popup);
  platform_->mainQueue.async([self = shared_from_this(), popup, uriFinal] {
    if (self->tornDown_) return;
    self->uriToRefresh_ = uriFinal;
    self->loadPage(*popup);
  });
}

void ZOVKPopupViewController::loadPage(const ZOVKPopupModel& popup) {
  if (webView_ == nullptr) return;
  const bool isFile = popup.content_type != kContentTypeWebPage;
  const std::string address = isFile                  ? pageFileAddress(popup)
                              : uriToRefresh_.empty() ? popup.uri
                                                      : uriToRefresh_;
  ownPage_.willLoad(address);
  if (isFile) {
    allowOwnFile(address);
    return webView_->loadFile(address, address);
  }
  ZPLogger::writeDirectly("webView will loadRequest the url : " + address);
  webView_->load(address);
}

void ZOVKPopupViewController::finishShow() {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::finishShow");
  const PopupPointer current = currentModel();
  debug("Finish show %@", current != nullptr ? current->scene : std::string());
  if (current != nullptr && current->pop_freq == kPopFreqOnce) {
    if (auto* const files = ZOVKPopupFileManager::sharedInstance()) {
      files->saveInternalFile(kOnceRecordFile, current->sig, true);
    }
  }
  showPopup();
}

void ZOVKPopupViewController::callComplete(std::int32_t code, const std::string& message) {
  if (!complete_) return;
  const Complete complete = std::exchange(complete_, nullptr);
  complete(code, message);
}

void ZOVKPopupViewController::interfaceDidFail(const std::string& reason) {
  const ActionScope scope(*this);
  notifyDisplayFailed(reason);
  popupArr_.clear();
  callComplete(ZOVKPopupResultError, reason);
}

void ZOVKPopupViewController::tearDown() {
  tornDown_ = true;
  window_ = nullptr;
  if (runningActions_ == 0) letGo();
}

void ZOVKPopupViewController::letGo() {
  if (webView_ != nullptr) {
    webView_->setNavigationDelegate({});
    webView_->stopLoading();
    webView_->removeFromSuperview();
    webView_ = nullptr;
  }
  screen_.letGo();
  view_ = nullptr;
  player_ = {};
  complete_ = nullptr;
  notifyRequestEnded();
  popupArr_.clear();
  currentModel_.set(nullptr);
  uriToRefresh_.clear();
  modelToRefresh_.set(nullptr);
}

}  // namespace zovk
