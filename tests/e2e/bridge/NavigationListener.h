#pragma once

#include <string>
#include <vector>

#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// A game that decides on navigations and records its events. It cancels navigations to
/// "forbidden".
class NavigationListener final : public WebViewDelegate {
 public:
  void decidePolicyForNavigationAction(WebView&, const NavigationAction& action,
                                       const NavigationDecision& decide) override {
    decided.push_back(action.url);
    const bool allow = action.url.find("forbidden") == std::string::npos;
    decide(allow ? NavigationPolicy::kAllow : NavigationPolicy::kCancel);
  }
  void didStartProvisionalNavigation(WebView&) override { events.emplace_back("started"); }
  void didCommitNavigation(WebView&) override { events.emplace_back("committed"); }
  void didFinishNavigation(WebView&) override { events.emplace_back("finished"); }
  void didFailProvisionalNavigation(WebView&, const std::string&) override {
    events.emplace_back("failed before it was there");
  }
  void didFailNavigation(WebView&, const std::string&) override { events.emplace_back("failed"); }
  void webContentProcessDidTerminate(WebView&) override { events.emplace_back("terminated"); }
  void createWebView(WebView&, const NavigationAction& action) override {
    events.push_back("window " + action.url);
  }

  std::vector<std::string> decided;
  std::vector<std::string> events;
};

}  // namespace zovk
