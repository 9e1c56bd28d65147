#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/memory/MemoryWebView.h"
#include "unit/bridge/BridgeFixture.h"
#include "zovkpopup/Bridge.h"

namespace zovk {

inline constexpr const char* kAskForBridge = "https://__bridge_loaded__/";
inline constexpr const char* kQueueSignal = "https://__wvjb_queue_message__/";

/// A game's own delegate, which records its events and leaves decisions open.
class NavigationRecorder : public WebViewDelegate {
 public:
  void decidePolicyForNavigationAction(WebView& webView, const NavigationAction& action,
                                       const NavigationDecision& decide) override {
    note(webView, "decide " + action.url);
    decision = decide;
  }
  void didStartProvisionalNavigation(WebView& webView) override { note(webView, "start"); }
  void didCommitNavigation(WebView& webView) override { note(webView, "commit"); }
  void didFailProvisionalNavigation(WebView& webView, const std::string& error) override {
    note(webView, "provisional " + error);
  }
  void didFailNavigation(WebView& webView, const std::string& error) override {
    note(webView, "fail " + error);
  }
  void didFinishNavigation(WebView& webView) override { note(webView, "finish"); }
  void webContentProcessDidTerminate(WebView& webView) override { note(webView, "terminated"); }
  void webContentProcessDidFail(WebView& webView, const std::string& reason) override {
    note(webView, "process failed " + reason);
  }
  void webContentProcessResponsivenessDidChange(WebView& webView, bool responsive) override {
    note(webView, responsive ? "answers" : "hangs");
  }
  void createWebView(WebView& webView, const NavigationAction& action) override {
    note(webView, "window " + action.url);
  }

  std::vector<std::string> events;
  const WebView* about = nullptr;  ///< The web view of the last event.
  NavigationDecision decision;

 private:
  void note(const WebView& webView, std::string event) {
    about = &webView;
    events.push_back(std::move(event));
  }
};

/// A bridge on a web view in memory, whose page a test plays.
class WebViewBridgeFixture : public BridgeFixture {
 protected:
  using Adapter = ZOVKPopupWKWebViewJavascriptBridge;
  using ResponseCallback = Adapter::ResponseCallback;

  std::shared_ptr<MemoryWebView> makeView() {
    return std::make_shared<MemoryWebView>(memory_->scheduler, WebViewConfiguration());
  }
  /// Makes the page ask for the bridge.
  void askForBridge() { view_->navigate(kAskForBridge); }
  /// Makes the page signal that `queue` can be fetched: JSON, or absent for a script that fails.
  void signal(const std::optional<boost::json::value>& queue) {
    view_->setScriptHandler([queue](const std::string& script) {
      ScriptResult result;
      if (script != "WebViewJavascriptBridge._fetchQueue();") {
        result.value = nullptr;
      } else if (queue) {
        result.value = *queue;
      } else {
        result.error = "no such variable";
      }
      return result;
    });
    view_->navigate(kQueueSignal);
    memory_->scheduler.runReady();
  }

  std::shared_ptr<MemoryWebView> view_ = makeView();
  std::shared_ptr<Adapter> adapter_ = Adapter::bridgeForWebView(view_, memory_->shared());
};

}  // namespace zovk
