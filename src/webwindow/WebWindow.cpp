#include "zovkpopup/WebWindow.h"

#include <cmath>
#include <utility>

#include "logging/ZPLogger.h"
#include "platform/HostPlatform.h"
#include "text/LowerCase.h"
#include "text/UrlText.h"
#include "webwindow/WebWindowBridge.h"
#include "webwindow/WebWindowController.h"
#include "zovkpopup/platform/Window.h"

namespace zovk {
namespace {

bool isWebAddress(const std::string& address) {
  const std::string scheme = lowerCase(partsOfUrl(address).scheme);
  return scheme == "http" || scheme == "https";
}

bool isPlace(const Rect& frame) {
  if (!std::isfinite(frame.x) || !std::isfinite(frame.y)) return false;
  const bool fullScreen = frame.width == 0 && frame.height == 0;
  return fullScreen || (std::isfinite(frame.width) && std::isfinite(frame.height) &&
                        frame.width > 0 && frame.height > 0);
}

/// Returns what is wrong with the settings; null if nothing is.
const char* faultOf(const ZOVKPopupWebWindowSettings& settings) {
  if (settings.address.empty() == settings.pageFile.empty()) {
    return "it takes either an address or a page file";
  }
  if (!settings.address.empty() && !isWebAddress(settings.address)) {
    return "the address is no http or https address";
  }
  if (!settings.pageFile.empty() && settings.pageFile.front() != '/') {
    return "the page file is no absolute path";
  }
  return isPlace(settings.frame) ? nullptr : "the frame is no place on a screen";
}

WebViewConfiguration pageConfiguration(const ZOVKPopupWebWindowSettings& settings) {
  WebViewConfiguration configuration;
  configuration.allowsInlineMediaPlayback = true;
  configuration.prefersMobileContent = true;
  configuration.adjustsContentInset = false;
  configuration.opaque = settings.opaque;
  return configuration;
}

void load(WebView& page, const ZOVKPopupWebWindowSettings& settings) {
  if (!settings.address.empty()) return page.load(settings.address);
  const std::string address = "file://" + withPathEncoding(settings.pageFile);
  page.loadFile(address, address);
}

}  // namespace

std::unique_ptr<ZOVKPopupWebWindow> ZOVKPopupWebWindow::open(
    const ZOVKPopupWebWindowSettings& settings) {
  auto platform = hostPlatform();
  const char* const fault = platform == nullptr
                                ? "the host is not set up, or this is not its main thread"
                                : faultOf(settings);
  if (fault != nullptr) {
    logError("ZOVKPopupWebWindow::open: %s", fault);
    return nullptr;
  }
  return std::unique_ptr<ZOVKPopupWebWindow>(new ZOVKPopupWebWindow(settings, std::move(platform)));
}

ZOVKPopupWebWindow::ZOVKPopupWebWindow(const ZOVKPopupWebWindowSettings& settings,
                                       std::shared_ptr<Platform> platform)
    : platform_(std::move(platform)), failed_(settings.failed) {
  UserInterface& userInterface = platform_->userInterface;
  const auto page = userInterface.makeWebView(pageConfiguration(settings));
  controller_ = std::make_shared<WebWindowController>(
      page, settings.pageChanged, [this](const std::string& reason) { fail(reason); });
  bridge_ = WebWindowBridge::make(controller_, platform_);
  bridge_->setWebViewDelegate(settings.navigationDelegate);
  window_ = userInterface.makeWindow(settings.frame);
  if (!settings.opaque) window_->setBackgroundColor(Color::clear());
  window_->setRootViewController(controller_);
  load(*page, settings);
  window_->makeKeyAndVisible();
}

ZOVKPopupWebWindow::~ZOVKPopupWebWindow() {
  close();
}

bool ZOVKPopupWebWindow::isOpen() const {
  return window_ != nullptr && hostPlatform() == platform_;
}

void ZOVKPopupWebWindow::reload() {
  if (isOpen()) controller_->page()->reload();
}

void ZOVKPopupWebWindow::evaluate(const std::string& script,
                                  std::function<void(ScriptResult)> completion) {
  if (isOpen()) return controller_->page()->evaluateJavaScript(script, std::move(completion));
  platform_->mainQueue.async([completion = std::move(completion)] {
    if (completion) completion({std::nullopt, "The window is closed"});
  });
}

void ZOVKPopupWebWindow::close() {
  const auto window = std::exchange(window_, nullptr);
  if (window == nullptr) return;
  bridge_->close();
  window->setRootViewController(nullptr);
}

void ZOVKPopupWebWindow::fail(const std::string& reason) {
  const auto failed = failed_;  // the call may let this window go
  close();
  if (failed) failed(reason);
}

}  // namespace zovk
