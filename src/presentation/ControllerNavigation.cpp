#include "presentation/ActionScope.h"
#include "presentation/ZOVKPopupViewController.h"
#include "support/Outlets.h"
#include "text/UrlText.h"

namespace zovk {
namespace {

bool isPageScheme(const std::string& scheme) {
  return scheme == "http" || scheme == "https" || scheme == "file";
}

}  // namespace

void ZOVKPopupViewController::decidePolicyForNavigationAction(WebView&,
                                                              const NavigationAction& action,
                                                              const NavigationDecision& decide) {
  constexpr DebugLog debug =
      controllerLog("ZOVKPopupViewController::decidePolicyForNavigationAction");
  const ActionScope scope(*this);
  debug("Decide policy for navigation action, url:%@", action.url);
  if (tornDown_ || webView_ == nullptr) return decide(NavigationPolicy::kCancel);
  if (action.targetFrame == TargetFrame::kNone) webView_->load(action.url);
  const UrlParts parts = partsOfUrl(action.url);
  if (!isPageScheme(parts.scheme)) return leaveForSystem(action.url, decide);
  if (parts.host.empty() || parts.host != platform_->device.appStoreHost()) {
    return decideByPrefix(action.url, decide);
  }
  platform_->userInterface.openUrl(
      action.url, [self = shared_from_this(), url = action.url, decide](bool opened) {
        if (opened || self->tornDown_) return decide(NavigationPolicy::kCancel);
        self->decideByPrefix(url, decide);
      });
}

// An address that is not a page's goes to the system, if that has a program for it.
void ZOVKPopupViewController::leaveForSystem(const std::string& url,
                                             const NavigationDecision& decide) {
  if (platform_->userInterface.canOpenUrl(url)) {
    platform_->userInterface.openUrl(url, nullptr);
  } else {
    needRefresh_ = false;
    screen_.setHidden(outlets::kRefresh, false);
  }
  decide(NavigationPolicy::kCancel);
}

void ZOVKPopupViewController::decideByPrefix(const std::string& url,
                                             const NavigationDecision& decide) {
  if (isOwnPage(url)) {
    decide(NavigationPolicy::kAllow);
    needRefresh_ = true;
    screen_.setHidden(outlets::kRefresh, true);
    return;
  }
  if (platform_->userInterface.canOpenUrl(url)) platform_->userInterface.openUrl(url, nullptr);
  decide(NavigationPolicy::kCancel);
}

// The rule's answer for this address is known before the web view asks: it is the popup's own page,
// and no other program opens a file.
void ZOVKPopupViewController::allowOwnFile(const std::string& address) {
  if (partsOfUrl(address).scheme == "file" && isOwnPage(address)) webView_->allowAhead(address);
}

bool ZOVKPopupViewController::isOwnPage(const std::string& url) const {
  const PopupPointer current = currentModel();
  return current != nullptr && ownPage_.contains(*current, url);
}

void ZOVKPopupViewController::didResolveAddress(WebView&, const std::string& asked,
                                                const std::string& address) {
  ownPage_.resolve(asked, address);
}

void ZOVKPopupViewController::didStartProvisionalNavigation(WebView&) {
  constexpr DebugLog debug =
      controllerLog("ZOVKPopupViewController::didStartProvisionalNavigation");
  debug("Did start provisional navigation");
}

void ZOVKPopupViewController::didFailProvisionalNavigation(WebView&, const std::string& error) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::didFailProvisionalNavigation");
  debug("Did fail provisional navigation, error:%@", error);
  notifyPageFailed(error);
}

void ZOVKPopupViewController::didFailNavigation(WebView&, const std::string& error) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::didFailNavigation");
  debug("Did fail navigation, error:%@", error);
  notifyPageFailed(error);
}

void ZOVKPopupViewController::didFinishNavigation(WebView&) {
  constexpr DebugLog debug = controllerLog("ZOVKPopupViewController::didFinishNavigation");
  debug("Did finish navigation");
  screen_.undimPage();
  notifyShown();
}

void ZOVKPopupViewController::webContentProcessDidTerminate(WebView&) {
  if (webView_ != nullptr && !webView_->url().empty()) webView_->reload();
}

void ZOVKPopupViewController::webContentProcessDidFail(WebView&, const std::string& reason) {
  interfaceDidFail(reason);
}

void ZOVKPopupViewController::webContentProcessResponsivenessDidChange(WebView&, bool responsive) {
  pageHangs_ = !responsive;
  const PopupPointer shown = currentModel();
  if (responsive || shown == nullptr) return;
  logError("Page of %@ does not answer", shown->scene);
  offerWayOut();
}

void ZOVKPopupViewController::createWebView(WebView&, const NavigationAction& action) {
  if (action.targetFrame != TargetFrame::kMain && webView_ != nullptr) webView_->load(action.url);
}

}  // namespace zovk
