#include "platform/linux/helper/HelperUserInterface.h"

#include <array>
#include <utility>

#include "platform/linux/helper/HelperLayout.h"
#include "platform/linux/helper/HelperWebView.h"
#include "platform/linux/helper/HelperWindow.h"
#include "platform/linux/system/Container.h"
#include "platform/linux/system/GameWindowName.h"
#include "protocol/MessageNames.h"
#include "text/LowerCase.h"

namespace zovk {
namespace {

constexpr bool kDeveloperTools = ZOVKPOPUP_DEVELOPER_TOOLS != 0;

HelperMessage helloOf(const ZOVKPopupHostSettings& settings, const LinuxDevice& device) {
  const GameWindowName window = gameWindowName(settings);
  HelperMessage hello{{member::kType, command::kHello},
                      {member::kVersion, kHelperProtocolVersion},
                      {member::kApplication, applicationId(settings)},
                      {member::kDataDirectory, device.homeDirectory()},
                      {member::kNativeWindow, window.x11},
                      {member::kDeveloperTools, kDeveloperTools},
                      {member::kPageMemory, settings.pageMemory},
                      {member::kDrawing, settings.drawing.c_str()},
                      {member::kDrawingFailed, false}};
  if (!settings.popupWindow.empty()) hello[member::kPopupWindow] = settings.popupWindow;
  if (!window.wayland.empty()) hello[member::kWaylandWindow] = window.wayland;
  if (settings.pageConsole) hello[member::kPageConsole] = true;
  return hello;
}

/// Returns the scheme of an address in lower case; empty if it has none.
std::string schemeOf(const std::string& url) {
  const std::size_t end = url.find(':');
  return end == std::string::npos ? std::string() : lowerCase(url.substr(0, end));
}

/// Returns a reply that passes on whether `member` of the answering event is true.
HelperReplies::Reply replyWith(std::string_view member, std::function<void(bool)> completion) {
  return [member, completion = std::move(completion)](const HelperMessage* answer) {
    if (completion) completion(answer != nullptr && answer->at(member).as_bool());
  };
}

/// Returns an empty text for a number that is not a press.
std::string_view nameOf(ZOVKPopupGamePad press) {
  constexpr std::array kNames = {word::kUp,    word::kDown,  word::kLeft,
                                 word::kRight, word::kPress, word::kLeave};
  const auto number = static_cast<std::size_t>(press);
  return number < kNames.size() ? kNames[number] : std::string_view();
}

}  // namespace

HelperUserInterface::HelperUserInterface(const ZOVKPopupHostSettings& settings,
                                         LinuxMainQueue& queue, LinuxDevice& device)
    : HelperUserInterface(settings, queue, device, helperProcessLauncher(settings)) {}

HelperUserInterface::HelperUserInterface(const ZOVKPopupHostSettings& settings,
                                         LinuxMainQueue& queue, LinuxDevice& device,
                                         HelperLauncher launcher)
    : session_(std::make_shared<HelperClient>(queue, device, std::move(launcher),
                                              helloOf(settings, device), settings.backdrop)) {
  session_->start();
}

HelperUserInterface::~HelperUserInterface() {
  shutDown();
}

void HelperUserInterface::gameWindowDidBecomeKey() {
  session_->objects().keyWindow = 0;
  session_->gameHasKeyboard(true);
}

void HelperUserInterface::gameWindowDidResignKey() {
  HelperObjects& objects = session_->objects();
  if (objects.activeWindow != 0) objects.keyWindow = objects.activeWindow;
  session_->gameHasKeyboard(false);
}

void HelperUserInterface::gameWindowDidResize(int width, int height) {
  session_->gameHasSize({static_cast<double>(width), static_cast<double>(height)});
}

void HelperUserInterface::gamePadDidPress(ZOVKPopupGamePad press, const std::string& pressName,
                                          const std::string& leaveName) {
  const std::string_view name = nameOf(press);
  if (name.empty()) return;
  session_->send({{member::kType, command::kPadPress},
                  {member::kPress, name},
                  {member::kPressName, pressName},
                  {member::kLeaveName, leaveName}});
}

void HelperUserInterface::shutDown() {
  session_->shutDown();
}

void HelperUserInterface::prepare() {
  session_->prepare();
}

Rect HelperUserInterface::mainScreenBounds() const {
  return session_->objects().screen;
}

std::shared_ptr<Window> HelperUserInterface::makeWindow(const Rect& frame) {
  session_->start();
  const Rect all = mainScreenBounds();
  // The game's window may move before the helper reads this, so all there is has no numbers.
  const bool coversAll = frame.width <= 0 || frame.height <= 0 || frame == all;
  const Rect place = coversAll ? all : frame;
  session_->sizeKnown({place.width, place.height});
  return HelperWindow::make(session_, coversAll ? Rect{} : frame, {place.width, place.height});
}

std::shared_ptr<Layout> HelperUserInterface::loadLayout(const std::string& bundlePath,
                                                        const std::string& name,
                                                        std::weak_ptr<LayoutOwner> owner) {
  auto layout = std::make_shared<HelperLayout>(session_, bundlePath, name, std::move(owner));
  youngestLayout_ = layout;
  return layout;
}

std::shared_ptr<WebView> HelperUserInterface::makeWebView(
    const WebViewConfiguration& configuration) {
  return HelperWebView::make(session_, configuration);
}

bool HelperUserInterface::canOpenUrl(const std::string& url) const {
  return session_->objects().schemes.contains(schemeOf(url));
}

void HelperUserInterface::openUrl(const std::string& url,
                                  std::function<void(bool opened)> completion) {
  session_->request({{member::kType, command::kUrlOpen}, {member::kUrl, url}}, event::kUrlOpened, 0,
                    replyWith(member::kOpened, std::move(completion)));
}

void HelperUserInterface::snapshot(const Window* window, const std::string& path,
                                   Completion completion) {
  const auto* given = dynamic_cast<const HelperWindow*>(window);
  const HelperId id = given == nullptr ? session_->objects().frontWindow() : given->id();
  auto reply = replyWith(member::kDone, std::move(completion));
  if (id == 0) return session_->later([reply] { reply(nullptr); });
  session_->request(
      {{member::kType, command::kSnapshot}, {member::kWindow, id}, {member::kPath, path}},
      event::kSnapshotDone, id, std::move(reply));
}

void HelperUserInterface::sync(Completion completion) {
  const HelperId id = session_->objects().frontWindow();
  const HelperReplies::Reply reply = [completion =
                                          std::move(completion)](const HelperMessage* answer) {
    if (completion) completion(answer != nullptr);
  };
  if (id == 0) return session_->later([reply] { reply(nullptr); });
  session_->request({{member::kType, command::kSync}, {member::kWindow, id}}, event::kSynced, id,
                    reply);
}

std::optional<HelperInspector::ViewFrame> HelperUserInterface::viewFrame(
    const std::string& outlet) const {
  // The helper reports places only of views that have a number.
  if (const auto layout = youngestLayout_.lock()) layout->outlet(outlet);
  const HelperId window = session_->objects().frontWindow();
  std::optional<ViewFrame> youngest;
  for (const auto& [id, bound] : session_->objects().outlets) {
    if (window != 0 && bound.window == window && bound.name == outlet) youngest = bound.frame;
  }
  return youngest;
}

bool HelperUserInterface::hasKeyboard() const {
  const HelperObjects& objects = session_->objects();
  return objects.frontWindow() != 0 && objects.activeWindow == objects.frontWindow();
}

void HelperUserInterface::terminateWebProcess() {
  const auto& views = session_->objects().webViews;
  if (views.empty()) return;
  session_->send({{member::kType, command::kWebTerminate}, {member::kView, views.rbegin()->first}});
}

pid_t HelperUserInterface::helperProcessId() const {
  return session_->helperProcessId();
}

}  // namespace zovk
