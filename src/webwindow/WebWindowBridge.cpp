#include "webwindow/WebWindowBridge.h"

#include <utility>

#include "webwindow/WebWindowController.h"

namespace zovk {

std::shared_ptr<WebWindowBridge> WebWindowBridge::make(
    const std::shared_ptr<WebWindowController>& controller, std::shared_ptr<Platform> platform) {
  std::shared_ptr<WebWindowBridge> bridge(new WebWindowBridge(controller, std::move(platform)));
  bridge->_setupInstance(controller->page());
  bridge->reset();
  return bridge;
}

WebWindowBridge::WebWindowBridge(const std::shared_ptr<WebWindowController>& controller,
                                 std::shared_ptr<Platform> platform)
    : ZOVKPopupWKWebViewJavascriptBridge(std::move(platform)), controller_(controller) {}

// If a page never got the bridge, the messages that wait for it are the next page's.
void WebWindowBridge::holdMessagesForNextPage() {
  if (!base().startupMessageQueue()) reset();
}

// The game may let the window and its own delegate go in each of these calls. Its delegate hears of
// the event even so.

void WebWindowBridge::didCommitNavigation(WebView& webView) {
  if (!isOwn(webView)) return;
  holdMessagesForNextPage();
  const auto listener = listenerTo(webView);
  if (const auto controller = controller_.lock()) controller->pageDidChange();
  if (listener) listener->didCommitNavigation(webView);
}

void WebWindowBridge::webContentProcessDidTerminate(WebView& webView) {
  if (!isOwn(webView)) return;
  holdMessagesForNextPage();
  if (!webView.url().empty()) webView.reload();
  if (const auto listener = listenerTo(webView)) listener->webContentProcessDidTerminate(webView);
}

void WebWindowBridge::webContentProcessDidFail(WebView& webView, const std::string& reason) {
  if (!isOwn(webView)) return;
  const auto controller = controller_.lock();
  if (const auto listener = listenerTo(webView))
    listener->webContentProcessDidFail(webView, reason);
  if (controller) controller->interfaceDidFail(reason);
}

}  // namespace zovk
