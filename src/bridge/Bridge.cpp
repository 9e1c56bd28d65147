#include "zovkpopup/Bridge.h"

#include <utility>

#include "bridge/QueueSignal.h"
#include "logging/ZPLogger.h"

namespace zovk {
void ZOVKPopupWKWebViewJavascriptBridge::enableLogging() {
  Base::enableLogging();
}

std::shared_ptr<ZOVKPopupWKWebViewJavascriptBridge>
ZOVKPopupWKWebViewJavascriptBridge::bridgeForWebView(const std::shared_ptr<WebView>& webView,
                                                     std::shared_ptr<Platform> platform) {
  if (webView == nullptr || platform == nullptr) return nullptr;
  std::shared_ptr<ZOVKPopupWKWebViewJavascriptBridge> bridge(
      new ZOVKPopupWKWebViewJavascriptBridge(std::move(platform)));
  bridge->_setupInstance(webView);
  bridge->reset();
  return bridge;
}

ZOVKPopupWKWebViewJavascriptBridge::ZOVKPopupWKWebViewJavascriptBridge(
    std::shared_ptr<Platform> platform)
    : base_(std::make_shared<Base>(std::move(platform))) {}

void ZOVKPopupWKWebViewJavascriptBridge::_setupInstance(const std::shared_ptr<WebView>& webView) {
  webView_ = webView;
  webView->setNavigationDelegate(weak_from_this());
  // The signal's address as web views write it.
  webView->fetchAhead(std::string("https://") + kQueueSignalHost + "/",
                      base_->webViewJavascriptFetchQueyCommand());
  base_->setDelegate(weak_from_this());
}

ZOVKPopupWKWebViewJavascriptBridge::~ZOVKPopupWKWebViewJavascriptBridge() {
  base_->close();  // a handler may still hold a response callback, and that the core
  base_.reset();
  if (const auto webView = webView_.lock()) webView->fetchAhead({}, {});
  webView_.reset();
  webViewDelegate_.reset();
  // The reference is empty by now, so the web view keeps what it was given: an expired reference to
  // this bridge, or the delegate that somebody has set since.
  if (const auto webView = webView_.lock()) webView->setNavigationDelegate({});
}

void ZOVKPopupWKWebViewJavascriptBridge::send(std::optional<boost::json::value> data,
                                              ResponseCallback responseCallback) {
  base_->sendData(std::move(data), std::move(responseCallback), std::nullopt);
}

void ZOVKPopupWKWebViewJavascriptBridge::callHandler(const std::string& handlerName,
                                                     std::optional<boost::json::value> data,
                                                     ResponseCallback responseCallback) {
  base_->sendData(std::move(data), std::move(responseCallback), handlerName);
}

void ZOVKPopupWKWebViewJavascriptBridge::registerHandler(const std::string& handlerName,
                                                         Handler handler) {
  base_->setHandler(handlerName, std::move(handler));
}

void ZOVKPopupWKWebViewJavascriptBridge::removeHandler(const std::string& handlerName) {
  base_->removeHandler(handlerName);
}

void ZOVKPopupWKWebViewJavascriptBridge::reset() {
  base_->reset();
}

void ZOVKPopupWKWebViewJavascriptBridge::setupMessageQueue() {
  base_->setupMessageQueue();
}

void ZOVKPopupWKWebViewJavascriptBridge::close() {
  base_->close();
}

void ZOVKPopupWKWebViewJavascriptBridge::setWebViewDelegate(
    std::weak_ptr<WebViewDelegate> webViewDelegate) {
  webViewDelegate_ = std::move(webViewDelegate);
}

void ZOVKPopupWKWebViewJavascriptBridge::disableJavscriptAlertBoxSafetyTimeout() {
  base_->disableJavscriptAlertBoxSafetyTimeout();
}

std::string ZOVKPopupWKWebViewJavascriptBridge::_evaluateJavascript(
    const std::string& javascriptCommand) {
  if (const auto webView = webView_.lock()) webView->evaluateJavaScript(javascriptCommand, nullptr);
  return {};
}

void ZOVKPopupWKWebViewJavascriptBridge::WKFlushMessageQueue() {
  const auto webView = webView_.lock();
  if (webView == nullptr) return;
  webView->evaluateJavaScript(
      base_->webViewJavascriptFetchQueyCommand(),
      [self = shared_from_this()](ScriptResult result) { self->handleFetched(std::move(result)); });
}

void ZOVKPopupWKWebViewJavascriptBridge::handleFetched(ScriptResult result) {
  if (result.error && !base_->isClosed()) {
    ZPLogger::writeDirectly(
        "WebViewJavascriptBridge: WARNING: Error when trying to fetch data from WKWebView: " +
        *result.error);
  }
  auto* const text = result.value ? result.value->if_string() : nullptr;
  base_->flushFetchedQueue(text ? std::move(*text) : boost::json::string());
}

// The page may be anyone's: what it sends is only looked at, and no address of the bridge's is
// ever loaded.
void ZOVKPopupWKWebViewJavascriptBridge::answerPage(const std::string& url) {
  if (base_->isBridgeLoadedURL(url)) {
    base_->injectJavascriptFile();
  } else if (base_->isQueueMessageURL(url)) {
    WKFlushMessageQueue();
  } else {
    base_->logUnkownMessage(url);
  }
}

void ZOVKPopupWKWebViewJavascriptBridge::decidePolicyForNavigationAction(
    WebView& webView, const NavigationAction& action, const NavigationDecision& decide) {
  if (!isOwn(webView)) return;
  if (base_->isWebViewJavascriptBridgeURL(action.url)) {
    answerPage(action.url);
    return decide(NavigationPolicy::kCancel);
  }
  if (const auto delegate = webViewDelegate_.lock()) {
    return delegate->decidePolicyForNavigationAction(webView, action, decide);
  }
  decide(NavigationPolicy::kAllow);
}

std::shared_ptr<WebViewDelegate> ZOVKPopupWKWebViewJavascriptBridge::listenerTo(
    const WebView& webView) const {
  return isOwn(webView) ? webViewDelegate_.lock() : nullptr;
}

void ZOVKPopupWKWebViewJavascriptBridge::didStartProvisionalNavigation(WebView& webView) {
  if (const auto delegate = listenerTo(webView)) delegate->didStartProvisionalNavigation(webView);
}

void ZOVKPopupWKWebViewJavascriptBridge::didCommitNavigation(WebView& webView) {
  if (const auto delegate = listenerTo(webView)) delegate->didCommitNavigation(webView);
}

void ZOVKPopupWKWebViewJavascriptBridge::didFailProvisionalNavigation(WebView& webView,
                                                                      const std::string& error) {
  if (const auto delegate = listenerTo(webView)) {
    delegate->didFailProvisionalNavigation(webView, error);
  }
}

void ZOVKPopupWKWebViewJavascriptBridge::didFailNavigation(WebView& webView,
                                                           const std::string& error) {
  if (const auto delegate = listenerTo(webView)) delegate->didFailNavigation(webView, error);
}

void ZOVKPopupWKWebViewJavascriptBridge::didFinishNavigation(WebView& webView) {
  if (const auto delegate = listenerTo(webView)) delegate->didFinishNavigation(webView);
}

void ZOVKPopupWKWebViewJavascriptBridge::webContentProcessDidTerminate(WebView& webView) {
  if (const auto delegate = listenerTo(webView)) delegate->webContentProcessDidTerminate(webView);
}

void ZOVKPopupWKWebViewJavascriptBridge::webContentProcessDidFail(WebView& webView,
                                                                  const std::string& reason) {
  if (const auto delegate = listenerTo(webView))
    delegate->webContentProcessDidFail(webView, reason);
}

void ZOVKPopupWKWebViewJavascriptBridge::webContentProcessResponsivenessDidChange(WebView& webView,
                                                                                  bool responsive) {
  if (const auto delegate = listenerTo(webView)) {
    delegate->webContentProcessResponsivenessDidChange(webView, responsive);
  }
}

void ZOVKPopupWKWebViewJavascriptBridge::createWebView(WebView& webView,
                                                       const NavigationAction& action) {
  if (const auto delegate = listenerTo(webView)) delegate->createWebView(webView, action);
}

}  // namespace zovk
