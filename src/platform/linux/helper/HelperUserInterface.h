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

/// Windows, layouts and web views in a helper program, which is started ahead of need. Main thread
/// only; nothing waits for the helper. Queue and device must outlive `shutDown`; handles may
/// outlive everything and then have no effect. A helper that is lost is started again once; see
/// HelperClient.
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
  /// Ends the helper and takes it off the system's table, within two seconds. Repeatable; nothing
  /// is called back afterwards.
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
  void terminateWebProcess() override;
  pid_t helperProcessId() const override;

  /// Whether nothing is left of any window, layout, view or page, nor anybody who waits.
  bool isEmpty() const { return session_->isEmpty(); }

 private:
  const std::shared_ptr<HelperClient> session_;
  std::weak_ptr<HelperLayout> youngestLayout_;
};

}  // namespace zovk
