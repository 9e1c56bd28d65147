#include "zovkpopup/PreviewScreen.h"

#include <cstdio>
#include <utility>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

/// The real user interface on a screen of a given size.
class SizedUserInterface final : public UserInterface {
 public:
  SizedUserInterface(UserInterface& real, const Size& size) : real_(real), size_(size) {}

  Rect mainScreenBounds() const override { return {0, 0, size_.width, size_.height}; }
  std::shared_ptr<Window> makeWindow(const Rect& /*frame*/) override {
    return real_.makeWindow(mainScreenBounds());
  }
  std::shared_ptr<Layout> loadLayout(const std::string& bundlePath, const std::string& name,
                                     std::weak_ptr<LayoutOwner> owner) override {
    return real_.loadLayout(bundlePath, name, std::move(owner));
  }
  std::shared_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) override {
    return real_.makeWebView(configuration);
  }
  bool canOpenUrl(const std::string& url) const override { return real_.canOpenUrl(url); }
  void openUrl(const std::string& url, std::function<void(bool opened)> completion) override {
    real_.openUrl(url, std::move(completion));
  }

 private:
  UserInterface& real_;
  const Size size_;
};

class SizedPlatform final : public HostedPlatform {
 public:
  SizedPlatform(std::shared_ptr<HostedPlatform> real, const Size& size)
      : real_(std::move(real)), userInterface_(real_->interfaces().userInterface, size) {}

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
  SizedUserInterface userInterface_;
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

std::shared_ptr<HostedPlatform> withScreenSize(std::shared_ptr<HostedPlatform> platform,
                                               const Size& size) {
  return std::make_shared<SizedPlatform>(std::move(platform), size);
}

}  // namespace zovk::tool
