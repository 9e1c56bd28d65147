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
/// The page asks for the bridge by navigating, in a frame of its own say, to
/// "https://__bridge_loaded__"; the bridge then puts `WebViewJavascriptBridge` into the page and
/// calls the functions that the page left in `window.WVJBCallbacks`. Messages sent before that
/// wait. A page that is loaded anew has to ask anew; what was sent to a page without the bridge is
/// lost, so `reset` before a load when messages are to wait for the new page.
///
/// The bridge becomes the navigation delegate of the web view, whose holder must not set another;
/// whoever wants to hear of navigations gives the bridge a delegate of its own. The maker owns the
/// bridge. The bridge refers to web view and delegate without owning them, and does nothing once
/// the web view is gone. When the bridge is gone, the web view allows every navigation.
///
/// Sending, registering, removing, resetting and the responses to a page may come from any thread;
/// another thread than the main one waits until the main thread has handed the message over.
/// Everything else belongs to the main thread. Handlers and response callbacks are called there,
/// from the host's pump. Nothing fails: what goes wrong is told in the log.
class ZOVKPOPUP_API ZOVKPopupWKWebViewJavascriptBridge final
    : public WebViewDelegate,
      public ZOVKPopupWebViewJavascriptBridgeBaseDelegate,
      public std::enable_shared_from_this<ZOVKPopupWKWebViewJavascriptBridge> {
 public:
  using Base = ZOVKPopupWebViewJavascriptBridgeBase;
  using ResponseCallback = Base::ResponseCallback;
  using Handler = Base::Handler;

  /// Writes the traffic of all bridges to the log, from now on.
  static void enableLogging();
  /// The bridge of a web view; null without a web view or a platform.
  static std::shared_ptr<ZOVKPopupWKWebViewJavascriptBridge> bridgeForWebView(
      const std::shared_ptr<WebView>& webView,
      std::shared_ptr<Platform> platform = currentPlatform());
  ~ZOVKPopupWKWebViewJavascriptBridge() override;
  ZOVKPopupWKWebViewJavascriptBridge(const ZOVKPopupWKWebViewJavascriptBridge&) = delete;
  ZOVKPopupWKWebViewJavascriptBridge& operator=(const ZOVKPopupWKWebViewJavascriptBridge&) = delete;

  /// Sends data to no handler in particular; the page warns that it has none for it.
  void send(std::optional<boost::json::value> data, ResponseCallback responseCallback = nullptr);
  /// Calls a handler of the page. The callback, if any, is held until the page responds or `reset`.
  void callHandler(const std::string& handlerName,
                   std::optional<boost::json::value> data = std::nullopt,
                   ResponseCallback responseCallback = nullptr);
  /// Lets the page call `handler`, in place of any earlier one of that name. Owned until removed.
  void registerHandler(const std::string& handlerName, Handler handler);
  void removeHandler(const std::string& handlerName);
  /// Forgets callbacks that wait for the page, and holds messages back until it asks for the
  /// bridge.
  void reset();
  /// Sends what was held back, without waiting for the page to ask.
  void setupMessageQueue();
  /// Cuts bridge and page off from each other for good, and lets handlers and callbacks go.
  void close();
  /// Who hears of the navigations that are none of the bridge's.
  void setWebViewDelegate(std::weak_ptr<WebViewDelegate> webViewDelegate);
  /// Tells the page to handle messages at once. Only for pages that open no dialogs.
  void disableJavscriptAlertBoxSafetyTimeout();

  /// The half of the bridge that knows no web view.
  const Base& base() const { return *base_; }
  /// Runs a script in the web view; the text is always empty.
  std::string _evaluateJavascript(const std::string& javascriptCommand) override;
  /// Fetches what the page wants to send, and handles it.
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

  /// For whoever sets it; the bridge does not look at it.
  std::int64_t uniqueId = 0;

 private:
  explicit ZOVKPopupWKWebViewJavascriptBridge(std::shared_ptr<Platform> platform);
  void _setupInstance(const std::shared_ptr<WebView>& webView);
  bool isOwn(const WebView& webView) const { return webView_.lock().get() == &webView; }
  std::shared_ptr<WebViewDelegate> listenerTo(const WebView& webView) const;
  void answerPage(const std::string& url);
  void handleFetched(ScriptResult result);

  std::weak_ptr<WebView> webView_;
  std::weak_ptr<WebViewDelegate> webViewDelegate_;
  std::shared_ptr<Base> base_;
};

}  // namespace zovk
