#include "zovkpopup/Preview.h"

#include <array>

#include <fmt/format.h>
#include <poll.h>

#include "platform/linux/helper/HelperInspector.h"
#include "support/Utf8.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/PassedPosts.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk::tool {
namespace {

constexpr std::chrono::seconds kLoadingTakesAtMost{60};
// Pages like to come in with an animation.
constexpr std::chrono::milliseconds kAnimationsTake{600};
constexpr std::size_t kMostFindings = 1000;

bool fits(const Size& size, const Rect& screen) {
  return size.width <= screen.width && size.height <= screen.height;
}

}  // namespace

Preview::Preview(const PreviewBundle& bundle, const std::optional<Size>& size,
                 const StopSignals& signals)
    : signals_(signals),
      target_(bundle.target()),
      console_(bundle.pageAddress(), bundle.pageName()) {
  setUp(bundle, size);
  try {
    if (isAddress(target_)) refuseBadStatus(target_);
    if (!isOver()) {
      ZOVKPopup::showPopup(bundle.scene(), 0, [this](std::int32_t code, const std::string& text) {
        if (!answer_) answer_ = {code, text};
      });
    }
    if (size) refuseSizeBeyondScreen(*size);
    failIfNothingIsShown();
  } catch (...) {
    ZOVKPopupHost::shutDown();
    throw;
  }
}

Preview::~Preview() {
  ZOVKPopupHost::shutDown();
}

void Preview::setUp(const PreviewBundle& bundle, const std::optional<Size>& size) {
  ZOVKPopupHostSettings settings;
  settings.applicationId = "zovkpopup-preview";
  settings.resourceDirectory = bundle.resources().string();
  settings.dataDirectory = bundle.home().string();
  settings.helperPath = bundle.helper().string();
  settings.logSink = [this](std::string_view line) { hear(line); };
  settings.pageConsole = true;
  platform_ = makeDefaultPlatform(settings);
  if (platform_ == nullptr) throw ToolError("the library cannot be set up", kUnavailable);
  previewed_ = previewPlatform(platform_, {size, [this](const auto& handler, const auto& body) {
                                             hearPost(handler, body);
                                           }});
  if (!ZOVKPopupHost::setUp(previewed_))
    throw ToolError("the library cannot be set up", kUnavailable);
}

// The real screen is known once the helper runs. If no helper comes, the preview ends.
void Preview::refuseSizeBeyondScreen(const Size& size) {
  const UserInterface& real = platform_->interfaces().userInterface;
  turnFor(kLoadingTakesAtMost, [&real] { return real.mainScreenBounds().width > 0; });
  const Rect screen = real.mainScreenBounds();
  if (isOver() || fits(size, screen)) return;
  throw ToolError(fmt::format("--size {}x{}: does not fit the screen, which has {}x{}", size.width,
                              size.height, screen.width, screen.height));
}

// The engine shows a server's answer for a missing page like any other page.
void Preview::refuseBadStatus(const std::string& address) {
  constexpr int kRefused = 400;
  const auto status = std::make_shared<std::optional<int>>();
  MainQueue& queue = platform_->interfaces().mainQueue;
  UrlRequest request;
  request.url = address;
  const auto task = platform_->interfaces().urlSession.dataTask(
      request, [status, &queue](const DataResult& result) {
        queue.async([status, code = result.status] { *status = code; });
      });
  task->resume();
  turnFor(kLoadingTakesAtMost, [&status] { return status->has_value(); });
  if (status->value_or(0) >= kRefused) {
    throw ToolError(fmt::format("{}: the server answered {}", address, **status), kUnavailable);
  }
}

void Preview::failIfNothingIsShown() const {
  if (!answer_ || answer_->code >= 0) return;
  const std::string& why = answer_->message;
  constexpr std::string_view kNoDisplay = "no display";
  if (why.ends_with(kNoDisplay)) {
    throw ToolError(
        "nothing can be shown: there is no display; run it in a desktop session, or by "
        "xvfb-run where there is none",
        kUnavailable);
  }
  throw ToolError("nothing can be shown: " + why, kUnavailable);
}

std::optional<PreviewAnswer> Preview::awaitAnswer() {
  while (!isOver()) {
    turn();
    if (page_ == Page::kFailed) throw ToolError(failure(), kUnavailable);
  }
  failIfNothingIsShown();
  return answer_;
}

bool Preview::takePicture(const std::string& file) {
  turnFor(kLoadingTakesAtMost, [this] { return page_ != Page::kLoading; });
  failIfNothingIsShown();
  if (!isOver() && page_ != Page::kLoaded)
    throw ToolError(failure() + "; no picture was taken", kUnavailable);
  turnFor(kAnimationsTake, [this] { return page_ == Page::kFailed; });
  if (page_ == Page::kFailed) throw ToolError(failure() + "; no picture was taken", kUnavailable);
  if (isOver()) return false;
  auto& screen = dynamic_cast<HelperInspector&>(platform_->interfaces().userInterface);
  std::optional<bool> written;
  screen.snapshot(nullptr, file, [&written](bool done) { written = done; });
  while (!stopped_ && !written) turn();
  if (written == false) throw ToolError(file + ": the picture cannot be written", kCannotCreate);
  return written.has_value();
}

void Preview::run(int descriptor) {
  if (!isOver()) turn(-1, descriptor);
  if (page_ != Page::kFailed) return;
  say("zovkpopup: " + failure());
  page_ = Page::kLoaded;
}

void Preview::reload() {
  page_ = Page::kLoading;
  previewed_->reloadPage();
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
void Preview::turn(int milliseconds, int descriptor) {
  std::array<pollfd, 4> ready{{{ZOVKPopupHost::pollDescriptor(), POLLIN, 0},
                               {signals_.descriptor(), POLLIN, 0},
                               {output_.descriptor(), POLLIN, 0},
                               {descriptor, POLLIN, 0}}};
  ::poll(ready.data(), ready.size(), milliseconds);
  ZOVKPopupHost::pump();
  output_.read([this](std::string_view line) { readConsole(line); });
  stopped_ = stopped_ || ready[1].revents != 0;
}

void Preview::hear(std::string_view line) {
  constexpr std::string_view kController = "[Debug]ZOVKPopupViewController ";
  constexpr std::string_view kError = "error:";
  if (line.starts_with("helper: ")) say(std::string(line));
  if (!line.starts_with(kController)) return;
  if (line.ends_with("Did finish navigation") && page_ == Page::kLoading) page_ = Page::kLoaded;
  const std::size_t failed = line.find("Did fail ");
  if (failed == std::string_view::npos) return;
  const std::size_t error = line.find(kError, failed);
  const std::string why(error == std::string_view::npos ? line.substr(failed)
                                                        : line.substr(error + kError.size()));
  {
    const std::lock_guard lock(mutex_);
    failure_ = target_ + ": the page did not load: " + why;
  }
  if (page_ != Page::kLoading) return say("zovkpopup: a page did not load: " + why);
  page_ = Page::kFailed;
}

std::string Preview::failure() const {
  const std::lock_guard lock(mutex_);
  return failure_.empty() ? target_ + ": the page did not load" : failure_;
}

void Preview::hearPost(const std::string& handler, const std::optional<boost::json::value>& body) {
  const std::string remark = remarkOn(handler, body);
  if (remark.empty()) return;
  say(console_.name() + ": " + remark);
  if (findings_.remarks.size() < kMostFindings) findings_.remarks.push_back(remark);
}

void Preview::readConsole(std::string_view line) {
  const auto message = console_.read(repairedUtf8(std::string(line)));
  if (!message) return say(std::string(line));
  say(message->line());
  if (findings_.console.size() < kMostFindings) findings_.console.push_back(*message);
  // A page whose own address may not be loaded counts as loaded, and is empty.
  if (message->level != "blocked" || !isAddress(target_) || !message->text.ends_with(target_))
    return;
  const std::lock_guard lock(mutex_);
  failure_ = target_ + ": the page did not load: " + message->text;
  page_ = Page::kFailed;
}

}  // namespace zovk::tool
