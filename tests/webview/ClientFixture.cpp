#include "ClientFixture.h"

#include <chrono>
#include <csignal>
#include <cstdlib>

#include <boost/json/serialize.hpp>
#include <poll.h>

#include "logging/ZPLogger.h"

namespace zovk {

void ClientScreen::loadView(std::shared_ptr<View> view) {
  view_ = std::move(view);
  WebViewConfiguration configuration;
  configuration.scriptMessageHandlers["Game"] = shared_from_this();
  page = interface_.makeWebView(configuration);
  page->setNavigationDelegate(weak_from_this());
  loadLayout();
}

void ClientScreen::loadLayout() {
  layout_ = interface_.loadLayout(HELPER_BUNDLE, layoutName, weak_from_this());
  view_->addSubview(*layout_->root());
  layout_->root()->pinEdgesTo(*view_);
  const auto content = layout_->outlet("contentView");
  content->addSubview(*page);
  page->pinEdgesTo(*content);
  content->sendSubviewToBack(*page);
  content->setClipsToBounds(true);
  layout_->outlet("crossBtn")->setImage(std::string(HELPER_BUNDLE) + "/close.png");
  for (const char* hidden : {"returnBtn", "refreshBtn", "stackView", "aloneConfirmStackView"}) {
    layout_->outlet(hidden)->setHidden(true);
  }
}

void ClientScreen::updateViewConstraints() {
  layout_->outlet("crossBtn")->pinTopTo(*view_, true, 0);
}

void ClientScreen::viewWillTransitionToSize(const Size& size, TransitionCoordinator& coordinator) {
  turns.push_back(size);
  coordinator.animateAlongside(
      [this] {
        oldLayout_ = layout_;
        loadLayout();
        updateViewConstraints();
      },
      [this] {
        oldLayout_.reset();
        ++arranged;
      });
}

void ClientScreen::tearDown() {
  page.reset();
  layout_.reset();
  oldLayout_.reset();
  view_.reset();
}

void ClientScreen::decidePolicyForNavigationAction(WebView&, const NavigationAction& action,
                                                   const NavigationDecision& decide) {
  navigations.push_back(action.url);
  if (whenAsked) whenAsked();
  decide(NavigationPolicy::kAllow);
}

void ClientScreen::webContentProcessDidTerminate(WebView&) {
  ++terminated;
  page->reload();
}

void ClientScreen::didReceiveScriptMessage(const std::string& name,
                                           const std::optional<boost::json::value>& body) {
  messages.push_back(name + " " + (body ? boost::json::serialize(*body) : "absent"));
}

HelperClientLive::HelperClientLive(std::uint32_t readySeconds) {
  std::string pattern = (std::filesystem::temp_directory_path() / "client-XXXXXX").string();
  directory_ = ::mkdtemp(pattern.data());
  LogEnvironment log;
  log.writeLine = [this](std::string_view line) { lines_.emplace_back(line); };
  ZPLogger::setEnvironment(std::move(log));
  ZOVKPopupHostSettings settings;
  settings.applicationId = "client.test";
  settings.readySeconds = readySeconds;
  queue_ = std::make_unique<LinuxMainQueue>();
  device_ = std::make_unique<LinuxDevice>(directory_.string(), settings.applicationId);
  client_ = std::make_unique<HelperUserInterface>(settings, *queue_, *device_);
  screen_ = std::make_shared<ClientScreen>(*client_);
}

HelperClientLive::~HelperClientLive() {
  window_.reset();
  client_.reset();
  ZPLogger::setEnvironment({});
  std::filesystem::remove_all(directory_);
}

void HelperClientLive::TearDown() {
  std::vector<std::string> errors;
  for (const std::string& line : lines_) {
    if (line.starts_with("[Error]")) errors.push_back(line);
  }
  EXPECT_EQ(errors.size(), killed_) << testing::PrintToString(errors);
}

void HelperClientLive::openPage() {
  window_ = client_->makeWindow({kLeft, kTop, kWidth, kHeight});
  window_->setRootViewController(screen_);
  screen_->page->loadFile(pageUrl(), pageUrl());
  window_->makeKeyAndVisible();
  pumpUntil("the page", [this] { return screen_->messages.size() == 1; });
  pumpUntil("the keyboard", [this] { return window_->isKeyWindow(); });
}

void HelperClientLive::pumpUntil(const char* what, const std::function<bool()>& done) {
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  const auto pump = [this] { queue_->pump(std::chrono::milliseconds(100)); };
  pump();
  while (!done()) {
    if (std::chrono::steady_clock::now() > deadline) {
      std::string log;
      for (const std::string& line : lines_) log += "\n" + line;
      FAIL() << "waited for " << what << log;
    }
    pollfd ready{queue_->pollDescriptor(), POLLIN, 0};
    ::poll(&ready, 1, 1000);
    pump();
  }
}

void HelperClientLive::sync() {
  bool synced = false;
  client_->sync([&](bool done) { synced = done; });
  pumpUntil("the screen", [&] { return synced; });
}

void HelperClientLive::click(const std::string& outlet) {
  sync();
  const auto place = client_->viewFrame(outlet);
  ASSERT_TRUE(place && place->visible) << outlet;
  const auto middle = [](double origin, double start, double length) {
    return " " + std::to_string(static_cast<int>(origin + start + length / 2));
  };
  const Rect& frame = place->frame;
  runTool("mousemove" + middle(kLeft, frame.x, frame.width) + middle(kTop, frame.y, frame.height) +
          " click 1");
}

void HelperClientLive::killHelper() {
  const pid_t helper = client_->helperProcessId();
  ASSERT_GT(helper, 0);
  ::kill(helper, SIGKILL);
  ++killed_;
  pumpUntil("the loss", [&] { return client_->helperProcessId() != helper; });
}

std::string HelperClientLive::pageUrl() {
  return std::string("file://") + HELPER_PAGES + "/client.html";
}

void runTool(const std::string& arguments) {
  ASSERT_EQ(std::system(("xdotool " + arguments).c_str()), 0) << arguments;
}

}  // namespace zovk
