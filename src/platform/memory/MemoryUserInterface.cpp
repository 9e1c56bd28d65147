#include "platform/memory/MemoryUserInterface.h"

namespace zovk {

std::shared_ptr<Window> MemoryUserInterface::makeWindow(const Rect& frame) {
  auto window = std::make_shared<MemoryWindow>(scheduler_, screen_, frame);
  windows_.add(window);
  return window;
}

std::shared_ptr<Layout> MemoryUserInterface::loadLayout(const std::string& bundlePath,
                                                        const std::string& name,
                                                        std::weak_ptr<LayoutOwner> owner) {
  static const auto standard = standardOutlets();
  const auto known = known_.find({bundlePath, name});
  const auto* outlets = known == known_.end() ? &standard : &known->second;
  if (missing_.contains(name)) outlets = nullptr;
  auto layout = std::make_shared<MemoryLayout>(bundlePath, name, std::move(owner), outlets);
  layouts_.add(layout);
  return layout;
}

std::shared_ptr<WebView> MemoryUserInterface::makeWebView(
    const WebViewConfiguration& configuration) {
  auto webView = std::make_shared<MemoryWebView>(scheduler_, configuration);
  webViews_.add(webView);
  return webView;
}

bool MemoryUserInterface::canOpenUrl(const std::string& url) const {
  const auto colon = url.find(':');
  return colon != std::string::npos && schemes_.contains(url.substr(0, colon));
}

void MemoryUserInterface::openUrl(const std::string& url,
                                  std::function<void(bool opened)> completion) {
  openedUrls_.push_back(url);
  const bool opened = openAnswer_ ? openAnswer_(url) : canOpenUrl(url);
  if (!completion) return;
  scheduler_.async([opened, completion = std::move(completion)] { completion(opened); });
}

void MemoryUserInterface::addLayout(const std::string& bundlePath, const std::string& name,
                                    std::vector<MemoryOutlet> outlets) {
  known_[{bundlePath, name}] = std::move(outlets);
}

void MemoryUserInterface::setOpenAnswer(std::function<bool(const std::string& url)> answer) {
  openAnswer_ = std::move(answer);
}

void MemoryUserInterface::failInterface(const std::string& reason) {
  screen_->failure = reason;
  for (const auto& window : windows_.live()) window->tellFailure();
}

}  // namespace zovk
