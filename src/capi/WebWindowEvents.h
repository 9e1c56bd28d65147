#pragma once

#include <string>

#include "capi/Callback.h"
#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// Passes the events of a web window to a game's functions. Main thread only. The window's handle
/// owns it. A function that frees the handle may be its last user.
class WebWindowEvents final : public WebViewDelegate {
 public:
  explicit WebWindowEvents(const zovkpopup_web_window_settings& settings);

  void pageChanged() const { pageChanged_(); }
  void failed(const std::string& reason) const { failed_(reason.c_str()); }

  // WebViewDelegate
  void decidePolicyForNavigationAction(WebView& webView, const NavigationAction& action,
                                       const NavigationDecision& decide) override;
  void didStartProvisionalNavigation(WebView& webView) override;
  void didFailProvisionalNavigation(WebView& webView, const std::string& error) override;
  void didFailNavigation(WebView& webView, const std::string& error) override;
  void didFinishNavigation(WebView& webView) override;
  void webContentProcessDidTerminate(WebView& webView) override;
  void createWebView(WebView& webView, const NavigationAction& action) override;

 private:
  bool allows(const NavigationAction& action) const noexcept;

  const UserData user_;
  const Callback<> pageChanged_;
  const Callback<const char*> failed_;
  const zovkpopup_allow_navigation allowNavigation_;
  const Callback<> loadStarted_;
  const Callback<> loadFinished_;
  const Callback<const char*> loadFailed_;
  const Callback<> pageProcessEnded_;
  const Callback<const char*> newWindowAsked_;
};

}  // namespace zovk
