#include "webwindow/WebWindowController.h"

#include <utility>

#include "zovkpopup/Bridge.h"

namespace zovk {

WebWindowController::WebWindowController(std::shared_ptr<WebView> page,
                                         const std::shared_ptr<Bridge>& bridge,
                                         const ZOVKPopupWebWindowSettings& settings, Failed failed)
    : page_(std::move(page)),
      bridge_(bridge),
      listener_(settings.navigationDelegate),
      pageChanged_(settings.pageChanged),
      failed_(std::move(failed)) {}

void WebWindowController::loadView(std::shared_ptr<View> view) {
  view->addSubview(*page_);
  page_->pinEdgesTo(*view);
}

void WebWindowController::tearDown() {
  if (page_ == nullptr) return;
  page_->setNavigationDelegate({});
  page_->stopLoading();
  page_->removeFromSuperview();
  page_ = nullptr;
  pageChanged_ = nullptr;
  failed_ = nullptr;
}

void WebWindowController::interfaceDidFail(const std::string& reason) {
  const Failed failed = failed_;  // the call tears this down
  if (failed) failed(reason);
}

// A page that never got the bridge leaves what waits for it to the next one.
void WebWindowController::holdMessagesForNextPage() const {
  const auto bridge = bridge_.lock();
  if (bridge != nullptr && !bridge->base().startupMessageQueue()) bridge->reset();
}

void WebWindowController::didCommitNavigation(WebView& webView) {
  holdMessagesForNextPage();
  const auto listener = listener_.lock();
  if (const auto changed = pageChanged_) changed();
  if (listener) listener->didCommitNavigation(webView);
}

void WebWindowController::webContentProcessDidTerminate(WebView& webView) {
  holdMessagesForNextPage();
  if (!webView.url().empty()) webView.reload();
  if (const auto listener = listener_.lock()) listener->webContentProcessDidTerminate(webView);
}

void WebWindowController::webContentProcessDidFail(WebView& webView, const std::string& reason) {
  const auto listener = listener_.lock();  // the game's answer to the failure may be to let all go
  if (listener) listener->webContentProcessDidFail(webView, reason);
  interfaceDidFail(reason);
}

// The rest is the listener's business alone.

void WebWindowController::decidePolicyForNavigationAction(WebView& webView,
                                                          const NavigationAction& action,
                                                          const NavigationDecision& decide) {
  if (const auto listener = listener_.lock()) {
    return listener->decidePolicyForNavigationAction(webView, action, decide);
  }
  decide(NavigationPolicy::kAllow);
}

void WebWindowController::didStartProvisionalNavigation(WebView& webView) {
  if (const auto listener = listener_.lock()) listener->didStartProvisionalNavigation(webView);
}

void WebWindowController::didFailProvisionalNavigation(WebView& webView, const std::string& error) {
  if (const auto listener = listener_.lock()) {
    listener->didFailProvisionalNavigation(webView, error);
  }
}

void WebWindowController::didFailNavigation(WebView& webView, const std::string& error) {
  if (const auto listener = listener_.lock()) listener->didFailNavigation(webView, error);
}

void WebWindowController::didFinishNavigation(WebView& webView) {
  if (const auto listener = listener_.lock()) listener->didFinishNavigation(webView);
}

void WebWindowController::webContentProcessResponsivenessDidChange(WebView& webView,
                                                                   bool responsive) {
  if (const auto listener = listener_.lock()) {
    listener->webContentProcessResponsivenessDidChange(webView, responsive);
  }
}

void WebWindowController::createWebView(WebView& webView, const NavigationAction& action) {
  if (const auto listener = listener_.lock()) listener->createWebView(webView, action);
}

}  // namespace zovk
