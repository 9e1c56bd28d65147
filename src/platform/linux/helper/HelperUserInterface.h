#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/helper/HelperClient.h"
#include "platform/linux/helper/HelperInspector.h"
#include "platform/linux/helper/HelperLauncher.h"
#include "platform/linux/system/LinuxDevice.h"
#include "platform/linux/system/LinuxMainQueue.h"
#include "zovkpopup/platform/HostedPlatform.h"
#include "zovkpopup/platform/UserInterface.h"

namespace zovk {

class HelperLayout;

/// Windows, layouts and web views in a helper program, which is started before it is needed. Main
/// thread only; nothing waits for the helper. Queue and device must outlive `shutDown`. Handles may
/// outlive everything; their calls then have no effect. A helper that is lost is started again
/// once; see HelperClient.
class HelperUserInterface final : public UserInterface, public HelperInspector {
 public:
  HelperUserInterface(const ZOVKPopupHostSettings& settings, LinuxMainQueue& queue,
                      LinuxDevice& device);
  HelperUserInterface(const ZOVKPopupHostSettings& settings, LinuxMainQueue& queue,
                      LinuxDevice& device, HelperLauncher launcher);
  ~HelperUserInterface() override;
  HelperUserInterface(const HelperUserInterface&) = delete;
  HelperUserInterface& operator=(const HelperUserInterface&) = delete;

  void gameWindowDidBecomeKey();
  void gameWindowDidResignKey();
  void gamePadDidPress(ZOVKPopupGamePad press, const std::string& pressName,
                       const std::string& leaveName);
  void gameWindowDidResize(int width, int height);
  /// Ends and reaps the helper within two seconds. May be repeated; nothing is called back
  /// afterwards.
  void shutDown();

  void prepare() override;
  Rect mainScreenBounds() const override;
  std::shared_ptr<Window> makeWindow(const Rect& frame) override;
  std::shared_ptr<Layout> loadLayout(const std::string& bundlePath, const std::string& name,
                                     std::weak_ptr<LayoutOwner> owner) override;
  std::shared_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) override;
  bool canOpenUrl(const std::string& url) const override;
  void openUrl(const std::string& url, std::function<void(bool opened)> completion) override;

  void snapshot(const Window* window, const std::string& path, Completion completion) override;
  void sync(Completion completion) override;
  std::optional<ViewFrame> viewFrame(const std::string& outlet) const override;
  bool hasKeyboard() const override;
  void terminateWebProcess() override;
  pid_t helperProcessId() const override;

  /// Returns whether nothing is left of any window, layout, view or page, and no callback waits.
  bool isEmpty() const { return session_->isEmpty(); }

 private:
  const std::shared_ptr<HelperClient> session_;
  std::weak_ptr<HelperLayout> youngestLayout_;
};

}  // namespace zovk
