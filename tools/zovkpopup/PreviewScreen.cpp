#include "zovkpopup/PreviewScreen.h"

#include <cstdio>
#include <utility>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

/// Tells what a page posts before the one that it is meant for hears it.
class OverheardHandler final : public ScriptMessageHandler {
 public:
  OverheardHandler(std::shared_ptr<ScriptMessageHandler> real, PreviewWishes::Posted posted)
      : real_(std::move(real)), posted_(std::move(posted)) {}

  void didReceiveScriptMessage(const std::string& name,
                               const std::optional<boost::json::value>& body) override {
    posted_(name, body);
    real_->didReceiveScriptMessage(name, body);
  }

 private:
  const std::shared_ptr<ScriptMessageHandler> real_;
  const PreviewWishes::Posted posted_;
};

/// The real user interface, perhaps on a screen of another size.
class PreviewUserInterface final : public UserInterface {
 public:
  PreviewUserInterface(UserInterface& real, PreviewWishes wishes)
      : real_(real), wishes_(std::move(wishes)) {}

  void reloadPage() const {
    if (const auto page = page_.lock()) page->reload();
  }

  Rect mainScreenBounds() const override {
    if (!wishes_.size) return real_.mainScreenBounds();
    return {0, 0, wishes_.size->width, wishes_.size->height};
  }
  std::shared_ptr<Window> makeWindow(const Rect& frame) override {
    return real_.makeWindow(wishes_.size ? mainScreenBounds() : frame);
  }
  std::shared_ptr<Layout> loadLayout(const std::string& bundlePath, const std::string& name,
                                     std::weak_ptr<LayoutOwner> owner) override {
    return real_.loadLayout(bundlePath, name, std::move(owner));
  }
  std::shared_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) override {
    WebViewConfiguration overheard = configuration;
    for (auto& [name, handler] : overheard.scriptMessageHandlers) {
      handler = std::make_shared<OverheardHandler>(std::move(handler), wishes_.posted);
    }
    auto page = real_.makeWebView(overheard);
    page_ = page;
    return page;
  }
  bool canOpenUrl(const std::string& url) const override { return real_.canOpenUrl(url); }
  void openUrl(const std::string& url, std::function<void(bool opened)> completion) override {
    real_.openUrl(url, std::move(completion));
  }

 private:
  UserInterface& real_;
  const PreviewWishes wishes_;
  std::weak_ptr<WebView> page_;
};

class RealPreviewPlatform final : public PreviewPlatform {
 public:
  RealPreviewPlatform(std::shared_ptr<HostedPlatform> real, PreviewWishes wishes)
      : real_(std::move(real)),
        userInterface_(real_->interfaces().userInterface, std::move(wishes)) {}

  void reloadPage() override { userInterface_.reloadPage(); }

  Platform& interfaces() override { return interfaces_; }
  std::shared_ptr<PlatformLog> sharedLog() const override { return real_->sharedLog(); }
  void pump(std::chrono::microseconds budget) override { real_->pump(budget); }
  int pollDescriptor() const override { return real_->pollDescriptor(); }
  void gameWindowDidBecomeKey() override { real_->gameWindowDidBecomeKey(); }
  void gameWindowDidResignKey() override { real_->gameWindowDidResignKey(); }
  void shutDown() override { real_->shutDown(); }

 private:
  static Platform replaced(const Platform& real, UserInterface& userInterface) {
    return {real.log,     real.mainQueue, real.timers, real.clock,      real.files,
            real.bundles, real.settings,  real.device, real.urlSession, userInterface};
  }

  const std::shared_ptr<HostedPlatform> real_;
  PreviewUserInterface userInterface_;
  Platform interfaces_ = replaced(real_->interfaces(), userInterface_);
};

}  // namespace

std::optional<Size> sizeOf(const std::string& text) {
  if (text.empty()) return std::nullopt;
  constexpr unsigned kLargest = 16384;
  unsigned width = 0;
  unsigned height = 0;
  char rest = 0;
  const bool read = std::sscanf(text.c_str(), "%5ux%5u%c", &width, &height, &rest) == 2;
  const auto isGood = [](unsigned length) { return length > 0 && length <= kLargest; };
  if (read && isGood(width) && isGood(height)) return Size{double(width), double(height)};
  throw ToolError("--size " + text + ": is no size; write such as 1280x720");
}

std::shared_ptr<PreviewPlatform> previewPlatform(std::shared_ptr<HostedPlatform> real,
                                                 PreviewWishes wishes) {
  return std::make_shared<RealPreviewPlatform>(std::move(real), std::move(wishes));
}

}  // namespace zovk::tool
