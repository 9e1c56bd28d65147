#include "zovkpopup/Preview.h"

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>

#include <poll.h>
#include <sys/signalfd.h>

#include "platform/linux/WebHostInspector.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/PreviewScreen.h"
#include "zovkpopup/ToolError.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk::tool {
namespace {

constexpr std::chrono::seconds kLoadingTakesAtMost{30};
// Pages like to come in with an animation.
constexpr std::chrono::milliseconds kAnimationsTake{600};

// Blocked in every thread, so that they are read like anything else that happens.
UniqueFd blockedSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, number);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return UniqueFd(::signalfd(-1, &signals, SFD_CLOEXEC));
}

}  // namespace

Preview::Preview(const PreviewBundle& bundle, const std::optional<Size>& size)
    : signals_(blockedSignals()) {
  PlatformSettings settings;
  settings.applicationId = "zovkpopup-preview";
  settings.resourceDirectory = bundle.resources().string();
  settings.dataDirectory = bundle.home().string();
  settings.helperPath = bundle.helper().string();
  settings.logSink = [this](std::string_view line) { hear(line); };
  platform_ = makeDefaultPlatform(settings);
  if (!ZOVKPopupHost::setUp(size ? withScreenSize(platform_, *size) : platform_))
    throw ToolError("the library cannot be set up");
  ZOVKPopup::showPopup(bundle.scene(), 0, [this](std::int32_t code, const std::string& message) {
    if (!answer_) answer_ = {code, message};
  });
}

Preview::~Preview() {
  ZOVKPopupHost::shutDown();
}

std::optional<PreviewAnswer> Preview::awaitAnswer() {
  while (!isOver()) turn();
  return answer_;
}

bool Preview::takePicture(const std::string& file) {
  turnFor(kLoadingTakesAtMost, [this] { return page_ != Page::kLoading; });
  if (!isOver() && page_ != Page::kLoaded) {
    throw ToolError("the page did not load; no picture was taken");
  }
  turnFor(kAnimationsTake, [] { return false; });
  if (isOver()) return false;
  auto& screen = dynamic_cast<WebHostInspector&>(platform_->interfaces().userInterface);
  std::optional<bool> written;
  screen.snapshot(nullptr, file, [&written](bool done) { written = done; });
  while (!stopped_ && !written) turn();
  if (written == false) throw ToolError("--screenshot " + file + ": cannot be written");
  return written.has_value();
}

void Preview::turnFor(std::chrono::milliseconds time, const std::function<bool()>& enough) {
  using std::chrono::milliseconds;
  const auto end = std::chrono::steady_clock::now() + time;
  while (!isOver() && !enough()) {
    const auto left = std::chrono::ceil<milliseconds>(end - std::chrono::steady_clock::now());
    if (left <= milliseconds::zero()) return;
    turn(static_cast<int>(left.count()));
  }
}

// Waits until something happens, and lets it.
void Preview::turn(int milliseconds) {
  std::array<pollfd, 2> ready{
      {{ZOVKPopupHost::pollDescriptor(), POLLIN, 0}, {signals_.get(), POLLIN, 0}}};
  ::poll(ready.data(), ready.size(), milliseconds);
  ZOVKPopupHost::pump();
  stopped_ = stopped_ || ready[1].revents != 0;
}

void Preview::hear(std::string_view line) {
  constexpr std::string_view kController = "[Debug]ZOVKPopupViewController ";
  if (line.starts_with("[Error] ")) {
    const std::lock_guard lock(mutex_);
    errors_.emplace_back(line.substr(std::string_view("[Error] ").size()));
  }
  if (!line.starts_with(kController)) return;
  if (line.ends_with("Did finish navigation") && page_ == Page::kLoading) page_ = Page::kLoaded;
  const std::size_t failure = line.find("Did fail ");
  if (failure == std::string_view::npos) return;
  std::fprintf(stderr, "zovkpopup: %s\n", std::string(line.substr(failure)).c_str());
  page_ = Page::kFailed;
}

std::string Preview::errors() const {
  const std::lock_guard lock(mutex_);
  std::string text;
  for (const std::string& error : errors_) text += error + "\n";
  return text;
}

}  // namespace zovk::tool
