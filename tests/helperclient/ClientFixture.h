#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <poll.h>

#include "helperclient/FakeHelper.h"
#include "logging/ZPLogger.h"
#include "platform/linux/helper/HelperUserInterface.h"

namespace zovk {

/// A root controller that records its calls.
class RecordingController : public ViewController {
 public:
  void loadView(std::shared_ptr<View> newView) override {
    view = std::move(newView);
    calls.emplace_back("loadView");
  }
  void updateViewConstraints() override { calls.emplace_back("updateViewConstraints"); }
  void viewWillTransitionToSize(const Size& size, TransitionCoordinator& coordinator) override {
    calls.push_back(fmt::format("transition {}x{}", size.width, size.height));
    coordinator.animateAlongside([this] { calls.emplace_back("alongside"); },
                                 [this] { calls.emplace_back("completion"); });
  }
  void tearDown() override {
    calls.emplace_back("tearDown");
    view = nullptr;
  }
  void interfaceDidFail(const std::string& reason) override {
    calls.push_back("failed: " + reason);
    if (whenFailed) whenFailed();
  }

  std::shared_ptr<View> view;
  std::vector<std::string> calls;
  std::function<void()> whenFailed;
};

/// A web view delegate that records its events, and answers navigations as the test decides.
class RecordingDelegate : public WebViewDelegate {
 public:
  void decidePolicyForNavigationAction(WebView&, const NavigationAction& action,
                                       const NavigationDecision& decide) override {
    calls.push_back("policy " + targetText(action) + action.url);
    if (whenAsked) whenAsked(decide);
  }
  void didStartProvisionalNavigation(WebView&) override { calls.emplace_back("started"); }
  void didFailProvisionalNavigation(WebView&, const std::string& error) override {
    calls.push_back("provisionalFailed " + error);
  }
  void didFailNavigation(WebView&, const std::string& error) override {
    calls.push_back("failed " + error);
  }
  void didFinishNavigation(WebView&) override {
    calls.emplace_back("finished");
    if (whenFinished) whenFinished();
  }
  void didCommitNavigation(WebView&) override { calls.emplace_back("committed"); }
  void webContentProcessDidTerminate(WebView&) override { calls.emplace_back("terminated"); }
  void webContentProcessDidFail(WebView&, const std::string& reason) override {
    calls.push_back("process failed: " + reason);
  }
  void webContentProcessResponsivenessDidChange(WebView&, bool responsive) override {
    calls.emplace_back(responsive ? "answers" : "hangs");
  }
  void createWebView(WebView&, const NavigationAction& action) override {
    calls.push_back("window " + targetText(action) + action.url);
  }
  void didResolveAddress(WebView&, const std::string& asked, const std::string& address) override {
    calls.push_back("resolved " + asked + " as " + address);
  }

  std::vector<std::string> calls;
  std::function<void(const NavigationDecision&)> whenAsked;
  std::function<void()> whenFinished;

 private:
  static std::string targetText(const NavigationAction& action) {
    if (action.targetFrame == TargetFrame::kMain) return "main ";
    return action.targetFrame == TargetFrame::kSub ? "sub " : "none ";
  }
};

class RecordingHandler : public ScriptMessageHandler {
 public:
  void didReceiveScriptMessage(const std::string& name,
                               const std::optional<boost::json::value>& body) override {
    calls.push_back(name + " " + (body ? boost::json::serialize(*body) : "absent"));
  }
  std::vector<std::string> calls;
};

class RecordingOwner : public LayoutOwner {
 public:
  void performAction(const std::string& action) override { calls.push_back(action); }
  std::vector<std::string> calls;
};

/// The client with fakes for the helper, and a log that is kept. Everything runs in `pump`.
class ClientOfTheHelper : public testing::Test {
 protected:
  ClientOfTheHelper() {
    LogEnvironment log;
    log.writeLine = [this](std::string_view line) { lines_.emplace_back(line); };
    ZPLogger::setEnvironment(std::move(log));
  }
  ~ClientOfTheHelper() override {
    window_.reset();
    controller_.reset();
    client_.reset();
    ZPLogger::setEnvironment({});
  }

  void start() { start(hosts_.launcher()); }
  void start(HelperLauncher launcher) {
    client_ =
        std::make_unique<HelperUserInterface>(settings_, queue_, device_, std::move(launcher));
  }
  /// Starts a client whose helper is ready and has read its greeting.
  void startReady() {
    start();
    hosts_.last().becomeReady();
    pump();
    hosts_.last().messages();
  }
  void makeWindow(const Rect& frame = {}) {
    window_ = client_->makeWindow(frame);
    window_->setRootViewController(controller_);
  }
  void pump() { queue_.pump(std::chrono::seconds(10)); }
  /// Pumps on events until `done`. Fails the test if that takes too long.
  void pumpUntil(const char* what, const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    pump();
    while (!done()) {
      ASSERT_LT(std::chrono::steady_clock::now(), deadline) << "waited for " << what;
      pollfd ready{queue_.pollDescriptor(), POLLIN, 0};
      ::poll(&ready, 1, 1000);
      pump();
    }
  }
  void receive(const std::string& event) {
    hosts_.last().send(event);
    pump();
  }
  void killHelper() {
    hosts_.last().die();
    pump();
  }
  std::vector<std::string> commands() {
    return hosts_.count() == 0 ? std::vector<std::string>{} : hosts_.last().commands();
  }
  std::vector<std::string> takeLines() { return std::exchange(lines_, {}); }

  ZOVKPopupHostSettings settings_{.applicationId = "test.game",
                                  .resourceDirectory = {},
                                  .dataDirectory = {},
                                  .helperPath = {},
                                  .nativeWindow = 7,
                                  .certificateAuthority = {},
                                  .logSink = {},
                                  .pageMemory = 512,
                                  .drawing = "plain"};
  std::vector<std::string> lines_;
  LinuxMainQueue queue_;
  LinuxDevice device_{"/data/test.game", "test.game"};
  FakeHelpers hosts_;
  std::unique_ptr<HelperUserInterface> client_;
  std::shared_ptr<RecordingController> controller_ = std::make_shared<RecordingController>();
  std::shared_ptr<Window> window_;
};

}  // namespace zovk
