#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/helper/HelperUserInterface.h"

namespace zovk {

/// The parts of a controller that a popup needs: one layout, one page in it, swapped when the
/// screen turns.
class ClientScreen : public ViewController,
                     public LayoutOwner,
                     public WebViewDelegate,
                     public ScriptMessageHandler,
                     public std::enable_shared_from_this<ClientScreen> {
 public:
  explicit ClientScreen(UserInterface& interface) : interface_(interface) {}

  void loadView(std::shared_ptr<View> view) override;
  void updateViewConstraints() override;
  void viewWillTransitionToSize(const Size& size, TransitionCoordinator& coordinator) override;
  void tearDown() override;
  void interfaceDidFail(const std::string& reason) override { failures.push_back(reason); }

  void performAction(const std::string& action) override { actions.push_back(action); }

  void decidePolicyForNavigationAction(WebView&, const NavigationAction& action,
                                       const NavigationDecision& decide) override;
  void didStartProvisionalNavigation(WebView&) override {}
  void didFailProvisionalNavigation(WebView&, const std::string& error) override {
    errors.push_back(error);
  }
  void didFailNavigation(WebView&, const std::string& error) override { errors.push_back(error); }
  void didFinishNavigation(WebView&) override { ++finished; }
  void webContentProcessDidTerminate(WebView&) override;
  void webContentProcessDidFail(WebView&, const std::string& reason) override {
    failures.push_back(reason);
  }
  void createWebView(WebView&, const NavigationAction&) override {}

  void didReceiveScriptMessage(const std::string& name,
                               const std::optional<boost::json::value>& body) override;

  std::vector<std::string> actions;
  std::vector<std::string> errors;
  std::vector<std::string> failures;
  std::vector<std::string> messages;
  std::vector<std::string> navigations;
  std::vector<Size> turns;
  int arranged = 0;  ///< Turns that are on screen.
  int finished = 0;
  int terminated = 0;
  std::function<void()> whenAsked;  ///< Runs before a navigation is allowed.
  std::string layoutName = "ZOVKPopupView";
  std::shared_ptr<WebView> page;

 private:
  void loadLayout();

  UserInterface& interface_;
  std::shared_ptr<View> view_;
  std::shared_ptr<Layout> layout_;
  std::shared_ptr<Layout> oldLayout_;
};

/// The client with the real helper. A display, a window manager and a session bus are supplied
/// from outside.
class HelperClientLive : public testing::Test {
 protected:
  static constexpr int kLeft = 60;
  static constexpr int kTop = 40;
  static constexpr int kWidth = 390;
  static constexpr int kHeight = 700;

  /// The helper rests that long after the last window.
  explicit HelperClientLive(std::uint32_t readySeconds = 60);
  ~HelperClientLive() override;

  /// Opens a window with a page, and waits until the page reports that it is there.
  void openPage();
  /// Pumps on events until `done`. Fails the test if the wait takes too long.
  void pumpUntil(const char* what, const std::function<bool()>& done);
  /// Waits until all commands so far are on screen.
  void sync();
  /// Clicks with the real pointer on the middle of a button.
  void click(const std::string& outlet);
  void killHelper();
  /// Checks that no helper was lost except those that the test killed.
  void TearDown() override;
  static std::string pageUrl();

  std::filesystem::path directory_;
  std::vector<std::string> lines_;
  std::size_t killed_ = 0;
  std::unique_ptr<LinuxMainQueue> queue_;
  std::unique_ptr<LinuxDevice> device_;
  std::unique_ptr<HelperUserInterface> client_;
  std::shared_ptr<ClientScreen> screen_;
  std::shared_ptr<Window> window_;
};

/// Runs a command line of the pointer and window tool to its end.
void runTool(const std::string& arguments);

}  // namespace zovk
