#include "platform/linux/helper/HelperClient.h"

#include <system_error>
#include <utility>

#include <unistd.h>

#include "logging/ZPLogger.h"
#include "platform/linux/helper/HelperEvents.h"
#include "platform/linux/helper/HelperWebView.h"
#include "platform/linux/helper/HelperWindow.h"
#include "protocol/MessageNames.h"

namespace zovk {
namespace {

constexpr const char* kAtRest = "it has ended since nothing was shown";

}  // namespace

HelperClient::HelperClient(LinuxMainQueue& queue, LinuxDevice& device, HelperLauncher launcher,
                           HelperMessage hello, ZOVKPopupBackdrop backdrop)
    : queue_(&queue),
      device_(device),
      process_(::getpid()),
      launcher_(std::move(launcher)),
      hello_(std::move(hello)),
      frames_(queue),
      reaper_(queue),
      watchdog_(queue, launcher_,
                {.ping =
                     [this] {
                       send({{member::kType, command::kPing}});
                     },
                 .silent = [this] { helperIsLost("it does not answer"); }}),
      rest_(queue, launcher_, {.rest = [this] { restHelper(); }, .end = [this] { endHelper(); }}),
      backdrop_(std::move(backdrop)) {}

bool HelperClient::isForeignProcess() const {
  return ::getpid() != process_;
}

bool HelperClient::isEmpty() const {
  return objects_.isEmpty() && journal_.isEmpty() && replies_.isEmpty();
}

void HelperClient::start() {
  if (isShutDown() || isForeignProcess()) return;
  if (isWaiting()) {
    mayStartAgain_ = true;
    return greet();
  }
  if (failure_.empty()) return;
  if (!backOff_.mayStart(launcher_.now())) {
    if (backOff_.saysSo()) logError("Helper is not started for every popup while it fails");
    return;
  }
  mayStartAgain_ = true;
  launch();
}

void HelperClient::prepare() {
  if (isResting_) return start();
  watchHelper();  // the time until it rests begins again
}

// What a helper takes up in memory for windows and pages it cannot give back: system libraries keep
// it. One that was not greeted has nothing of it, and is ready sooner than one yet to be started.
void HelperClient::restHelper() {
  endHelper();
  openLink();
  if (link_) failure_.clear();  // otherwise it has ended early, which nobody misses
  watchHelper();
}

// Not a loss: the next window, or whoever expects one, starts another.
void HelperClient::endHelper() {
  dropLink(HelperEnd::kByItself);
  isResting_ = true;
  failure_ = kAtRest;
  for (const auto& reply : replies_.takeAll()) later([reply] { reply(nullptr); });
}

void HelperClient::launch() {
  failure_.clear();
  isResting_ = false;
  const std::string error = openLink();
  if (link_) return greet();
  later([this, number = helperNumber_, error] {
    if (number == helperNumber_) helperIsLost(error);
  });
}

std::string HelperClient::openLink() {
  ++helperNumber_;
  try {
    HelperLauncher::Started started = launcher_.start();
    std::string error = started.error;
    if (started.socket) {
      link_ = HelperLife::open({*queue_, frames_, launcher_}, std::move(started), linkEvents());
    }
    return error;
  } catch (const std::system_error& exhausted) {
    return exhausted.what();
  }
}

void HelperClient::greet() {
  isResting_ = false;
  watchHelper();
  link_->expectReady(launcher_.readyTimeout);
  send(hello_);
  for (const HelperMessage& command : journal_.commands()) send(command);
}

HelperLife::Events HelperClient::linkEvents() {
  const auto weak = weak_from_this();
  return {.message =
              [weak](HelperMessage message) {
                const auto session = weak.lock();
                if (!session) return;
                session->watchdog_.heard();
                deliverHelperEvent(*session, std::move(message));
              },
          .lost =
              [weak](const std::string& reason) {
                if (const auto session = weak.lock()) session->helperIsLost(reason);
              }};
}

void HelperClient::send(const HelperMessage& command) {
  if (!link_ || isResting_ || isForeignProcess()) return;
  if (!link_->send(command)) logError("Helper command too long: %@", command.at(member::kType));
}

void HelperClient::command(HelperId object, HelperAspect aspect, const HelperMessage& command) {
  if (isShutDown()) return;
  send(command);
  journal_.remember(object, aspect, command);
}

void HelperClient::request(HelperMessage command, std::string_view event, HelperId about,
                           HelperReplies::Reply reply) {
  if (isForeignProcess()) return;
  const HelperId id = newId();
  command[member::kId] = id;
  const bool isSent = link_ && !isResting_ && link_->send(command);
  if (!isSent) return later([reply] { reply(nullptr); });
  replies_.expect(id, event, about, std::move(reply));
}

void HelperClient::forget(HelperId object) {
  journal_.forget(object);
  for (auto& reply : replies_.takeAbout(object)) later([reply] { reply(nullptr); });
}

void HelperClient::windowShown(HelperId window) {
  if (objects_.shownWindows.empty()) sendBackdrop();
  std::erase(objects_.shownWindows, window);
  objects_.shownWindows.push_back(window);
  watchHelper();
}

void HelperClient::windowClosed(HelperId window) {
  forget(window);
  objects_.windows.erase(window);
  std::erase(objects_.shownWindows, window);
  if (objects_.keyWindow == window) objects_.keyWindow = 0;
  if (objects_.activeWindow == window) objects_.activeWindow = 0;
  watchHelper();
  if (!isReady_) return;
  mayStartAgain_ = true;
  backOff_.wentWell();
}

void HelperClient::windowIsStuck(const std::string& display) {
  // Most systems have both, one within the other, and not the same troubles with both.
  hello_[member::kDisplay] = display == word::kX11 ? word::kWayland : word::kX11;
  if (!mayStartAgain_)
    hello_.erase(member::kDisplay);  // none is left; the next popup starts afresh
  helperIsLost("a window does not come up on " + display);
}

void HelperClient::backdropWanted() {
  backdrop_.setWanted(true);
  if (!objects_.shownWindows.empty()) sendBackdrop();
}

void HelperClient::sendBackdrop() {
  if (!link_ || isForeignProcess()) return;
  auto answer = backdrop_.ask(launcher_.now());
  // The game may have shut down meanwhile.
  if (answer && link_) link_->send(answer->command, std::move(answer->pixels));
}

// A helper with nothing on screen may take its time; at rest the game is not woken for it.
void HelperClient::watchHelper() {
  if (isShutDown() || isForeignProcess()) return;
  watchdog_.watch(isReady_ && !objects_.shownWindows.empty());
  if (isWaiting()) return rest_.watch(HelperRest::Helper::kResting);
  const bool isIdle = isReady_ && objects_.windows.empty();
  rest_.watch(isIdle ? HelperRest::Helper::kIdle : HelperRest::Helper::kBusy);
}

void HelperClient::heldAs(Orientation orientation) {
  if (!isShutDown()) device_.setOrientation(orientation);
}

void HelperClient::sizeKnown(const Size& size) {
  if (!isShutDown() && size.width > 0 && size.height > 0) device_.setWindowSize(size);
}

bool HelperClient::displayTellsOfGame() const {
  return hello_.at(member::kNativeWindow).to_number<std::uint64_t>() != 0;
}

void HelperClient::gameHasKeyboard(bool has) {
  if (isShutDown() || displayTellsOfGame()) return;
  hello_[member::kKey] = has;
  send({{member::kType, command::kGameKey}, {member::kKey, has}});
}

void HelperClient::gameHasSize(const Size& size) {
  if (isShutDown() || displayTellsOfGame() || size.width <= 0 || size.height <= 0) return;
  const boost::json::array frame{0, 0, size.width, size.height};
  hello_[member::kGameSize] = frame;
  objects_.screen = {0, 0, size.width, size.height};
  send({{member::kType, command::kGameSize}, {member::kSize, frame}});
}

void HelperClient::later(Task task) {
  if (isShutDown() || isForeignProcess()) return;
  queue_->async([weak = weak_from_this(), task = std::move(task)] {
    const auto session = weak.lock();
    if (session && !session->isShutDown()) task();
  });
}

HelperReplies::Reply HelperClient::takeReply(HelperId id, std::string_view event) {
  return replies_.take(id, event);
}

void HelperClient::helperIsReady(const std::string& renderer) {
  if (isResting_) return;                                       // it was not asked
  if (!renderer.empty()) hello_[member::kRenderer] = renderer;  // to look takes long
  isReady_ = true;
  link_->stopTimeout();
  watchHelper();
}

void HelperClient::helperIsLost(const std::string& reason) {
  const auto keepAlive = shared_from_this();
  if (isResting_) return endHelper();
  dropLink(HelperEnd::kAtOnce);
  const bool again = std::exchange(mayStartAgain_, false);
  logError("Helper lost (%s), %s", reason, again ? "starting it again" : "giving up");
  hello_[member::kDrawingFailed] = true;  // it may have been the graphics driver
  // A new helper is started before anybody hears of the loss, so that their new commands reach it.
  const auto replies = replies_.takeAll();
  if (again) {
    launch();
  } else {
    failure_ = "The helper cannot be used: " + reason;
    backOff_.gaveUp(launcher_.now());
  }
  for (const auto& reply : replies) {
    if (!isShutDown()) reply(nullptr);
  }
  if (!again) tellWindows();
}

void HelperClient::dropLink(HelperEnd end) {
  isReady_ = isResting_ = false;
  heldAs(Orientation::kUnknown);
  backdrop_.setWanted(false);  // the next one may see through its windows
  watchHelper();
  objects_.keyWindow = objects_.activeWindow = 0;
  for (auto& [id, outlet] : objects_.outlets) outlet = {outlet.name, 0, {}};
  for (const auto& [id, weak] : objects_.webViews) {
    if (const auto view = weak.lock()) view->fetchesLost();
  }
  if (!link_) return;
  link_->close();
  if (auto process = link_->takeProcess()) {
    if (end == HelperEnd::kAtOnce) process->kill();
    reaper_.add(std::move(*process));
  }
  link_.reset();
}

void HelperClient::tellWindows() {
  const std::string reason = failure_;
  const auto windows = objects_.windows;
  for (const auto& [id, weak] : windows) {
    const auto window = weak.lock();
    // Someone may have had it started again meanwhile.
    if (window && !isShutDown() && !failure_.empty()) window->fail(reason);
  }
}

void HelperClient::shutDown() {
  if (isShutDown() || isForeignProcess()) return;
  if (link_) {
    link_->close();
    if (auto process = link_->takeProcess()) reaper_.add(std::move(*process));
    link_.reset();
  }
  frames_.shutDown();
  backdrop_.close();
  watchdog_.close();
  rest_.close();
  reaper_.finish(launcher_.endTimeout);
  replies_.takeAll();
  queue_ = nullptr;
}

}  // namespace zovk
