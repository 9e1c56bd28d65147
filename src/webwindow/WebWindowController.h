#pragma once

#include <functional>
#include <memory>
#include <string>

#include "zovkpopup/WebWindow.h"
#include "zovkpopup/platform/Window.h"

namespace zovk {

/// The contents of a web window: a page that fills it. It receives the page's navigations from the
/// bridge, and resets the bridge when the page changes. Main thread only. The window owns it, and
/// it owns the page until it is torn down.
class WebWindowController final : public ViewController, public WebViewDelegate {
 public:
  using Bridge = ZOVKPopupWKWebViewJavascriptBridge;
  using Failed = std::function<void(const std::string& reason)>;

  WebWindowController(std::shared_ptr<WebView> page, const std::shared_ptr<Bridge>& bridge,
                      const ZOVKPopupWebWindowSettings& settings, Failed failed);

  /// Returns the page; null after it was torn down.
  const std::shared_ptr<WebView>& page() const { return page_; }

  // ViewController
  void loadView(std::shared_ptr<View> view) override;
  void updateViewConstraints() override {}
  void viewWillTransitionToSize(const Size& /*size*/, TransitionCoordinator&) override {}
  void tearDown() override;
  void interfaceDidFail(const std::string& reason) override;

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

 private:
  void holdMessagesForNextPage() const;

  std::shared_ptr<WebView> page_;
  const std::weak_ptr<Bridge> bridge_;
  const std::weak_ptr<WebViewDelegate> listener_;
  std::function<void()> pageChanged_;
  Failed failed_;
};

}  // namespace zovk
