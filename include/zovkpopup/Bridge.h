#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <boost/json/value.hpp>
#include <zovkpopup/BridgeBase.h>
#include <zovkpopup/Export.h>
#include <zovkpopup/platform/CurrentPlatform.h>
#include <zovkpopup/platform/WebView.h>

namespace zovk {

/// Lets a game and the page in one of its web views call each other's named handlers.
///
/// The page asks for the bridge by navigating to "https://__bridge_loaded__", for example in a
/// hidden frame. The bridge then puts `WebViewJavascriptBridge` into the page and calls the
/// functions that the page left in `window.WVJBCallbacks`. Messages sent before that wait. A
/// reloaded page has to ask again. Messages to a page without the bridge are lost, so call `reset`
/// before a load if messages must wait for the new page.
///
/// The bridge becomes the navigation delegate of the web view; do not set another one. To receive
/// navigation events, give the bridge a delegate with `setWebViewDelegate`. The caller owns the
/// bridge. The bridge does not own the web view or the delegate, and does nothing once the web view
/// is gone. Once the bridge is gone, the web view allows every navigation.
///
/// Any thread may send, register, remove, reset, and respond to the page. A thread other than the
/// main thread waits until the main thread has passed the message on. Call everything else on the
/// main thread. Handlers and response callbacks are called there, from the host's pump. No call
/// fails: mistakes are written to the log.
class ZOVKPOPUP_API ZOVKPopupWKWebViewJavascriptBridge
    : public WebViewDelegate,
      public ZOVKPopupWebViewJavascriptBridgeBaseDelegate,
      public std::enable_shared_from_this<ZOVKPopupWKWebViewJavascriptBridge> {
 public:
  using Base = ZOVKPopupWebViewJavascriptBridgeBase;
  using ResponseCallback = Base::ResponseCallback;
  using Handler = Base::Handler;

  /// Writes the traffic of all bridges to the log from now on.
  static void enableLogging();
  /// Makes the bridge of a web view. Returns null without a web view or a platform.
  static std::shared_ptr<ZOVKPopupWKWebViewJavascriptBridge> bridgeForWebView(
      const std::shared_ptr<WebView>& webView,
      std::shared_ptr<Platform> platform = currentPlatform());
  ~ZOVKPopupWKWebViewJavascriptBridge() override;
  ZOVKPopupWKWebViewJavascriptBridge(const ZOVKPopupWKWebViewJavascriptBridge&) = delete;
  ZOVKPopupWKWebViewJavascriptBridge& operator=(const ZOVKPopupWKWebViewJavascriptBridge&) = delete;

  /// Sends data without naming a handler. The page warns that it has no handler for it.
  void send(std::optional<boost::json::value> data, ResponseCallback responseCallback = nullptr);
  /// Calls a handler of the page. The callback, if any, is kept until the page responds or `reset`
  /// is called.
  void callHandler(const std::string& handlerName,
                   std::optional<boost::json::value> data = std::nullopt,
                   ResponseCallback responseCallback = nullptr);
  /// Registers a handler that the page may call by name. It replaces an earlier handler of that
  /// name, and is kept until it is removed.
  void registerHandler(const std::string& handlerName, Handler handler);
  /// Removes a handler.
  void removeHandler(const std::string& handlerName);
  /// Drops callbacks that wait for the page, and holds messages back until the page asks for the
  /// bridge.
  void reset();
  /// Sends the messages that were held back, without waiting for the page to ask.
  void setupMessageQueue();
  /// Separates bridge and page for good, and releases handlers and callbacks.
  void close();
  /// Sets the receiver of all navigation events except the bridge's own. It is not owned.
  void setWebViewDelegate(std::weak_ptr<WebViewDelegate> webViewDelegate);
  /// Makes the page handle messages at once. Use it only for pages that open no dialogs.
  void disableJavscriptAlertBoxSafetyTimeout();

  /// Returns the half of the bridge that does not depend on a web view.
  const Base& base() const { return *base_; }
  /// Runs a script in the web view. Always returns an empty text.
  std::string _evaluateJavascript(const std::string& javascriptCommand) override;
  /// Fetches the messages that the page wants to send, and handles them.
  void WKFlushMessageQueue();

  // WebViewDelegate
  void decidePolicyForNavigationAction(WebView& webView, const NavigationAction& action,
                                       const NavigationDecision& decide) override;
  void didStartProvisionalNavigation(WebView& webView) override;
  void didCommitNavigation(WebView& webView) override;
  void didFailProvisionalNavigation(WebView& webView, const std::string& error) override;
  void didFailNavigation(WebView& webView, const std::string& error) override;
  void didFinishNavigation(WebView& webView) override;
  void webContentProcessDidTerminate(WebView& webView) override;
  void webContentProcessDidFail(WebView& webView, const std::string& reason) override;
  void webContentProcessResponsivenessDidChange(WebView& webView, bool responsive) override;
  void createWebView(WebView& webView, const NavigationAction& action) override;

  /// Free for the game's use; the bridge ignores it.
  std::int64_t uniqueId = 0;

 protected:
  explicit ZOVKPopupWKWebViewJavascriptBridge(std::shared_ptr<Platform> platform);
  void _setupInstance(const std::shared_ptr<WebView>& webView);
  bool isOwn(const WebView& webView) const { return webView_.lock().get() == &webView; }
  /// Returns the game's delegate, for events of the own web view; null if there is none.
  std::shared_ptr<WebViewDelegate> listenerTo(const WebView& webView) const;

 private:
  void answerPage(const std::string& url);
  void handleFetched(ScriptResult result);

  std::weak_ptr<WebView> webView_;
  std::weak_ptr<WebViewDelegate> webViewDelegate_;
  std::shared_ptr<Base> base_;
};

}  // namespace zovk
