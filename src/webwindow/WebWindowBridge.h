#pragma once

#include <memory>
#include <string>

#include "zovkpopup/Bridge.h"

namespace zovk {

class WebWindowController;

/// The bridge of a web window. It starts again with each page, and loads a page again whose process
/// ended. The other events of the page go to the game's delegate, as those of every bridge do. Main
/// thread only. The window owns it.
class WebWindowBridge final : public ZOVKPopupWKWebViewJavascriptBridge {
 public:
  /// Makes the bridge of the page of `controller`, which it does not own.
  static std::shared_ptr<WebWindowBridge> make(
      const std::shared_ptr<WebWindowController>& controller, std::shared_ptr<Platform> platform);

  // WebViewDelegate
  void didCommitNavigation(WebView& webView) override;
  void webContentProcessDidTerminate(WebView& webView) override;
  void webContentProcessDidFail(WebView& webView, const std::string& reason) override;

 private:
  WebWindowBridge(const std::shared_ptr<WebWindowController>& controller,
                  std::shared_ptr<Platform> platform);
  void holdMessagesForNextPage();

  const std::weak_ptr<WebWindowController> controller_;
};

}  // namespace zovk
