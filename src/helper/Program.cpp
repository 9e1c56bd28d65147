#include "helper/Program.h"

#include <algorithm>
#include <utility>

#include <boost/json/array.hpp>

#include "helper/layout/ContainerView.h"
#include "helper/pad/GamePad.h"
#include "helper/page/PageGuards.h"
#include "helper/window/PlayerInput.h"
#include "helper/window/Screen.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

template <class T>
T* findIn(const std::map<Id, std::unique_ptr<T>>& items, Id id) {
  const auto found = items.find(id);
  return found == items.end() ? nullptr : found->second.get();
}

}  // namespace

Program::Program(const Greeting& greeting, EventSink events, Drawing drawing)
    : events_(std::move(events)),
      developerTools_(greeting.developerTools),
      drawing_(drawing),
      game_(greeting.nativeWindow, greeting.waylandWindow, greeting.gameSize, events_,
            gameListener()),
      backdrop_(events_),
      webViewFactory_({greeting.dataDirectory + "/webhost", developerTools_, greeting.pageMemory,
                       drawing, greeting.pageConsole}),
      views_([this](Id id, GtkWidget* widget) { onViewDropped(id, widget); }),
      toldScreen_(coveredFrame(game_)),
      held_(hasUprightScreen(),
            [this](const std::string& held) {
              events_({{member::kType, event::kHeld}, {member::kHeld, held}});
            }),
      monitors_([this] {
        tellScreen();
        forEachWindow(&ToolkitWindow::monitorsChanged);
      }) {
  game_.setWholeScreen(greeting.wholeScreen);
  if (greeting.gameKey) game_.setKeyboard(*greeting.gameKey);
}

Program::~Program() {
  while (!windows_.empty()) closeWindow(windows_.begin()->first);
}

void Program::askForBackdropAhead() {
  if (PopupPlace::willHide(game_)) backdrop_.ask();
}

void Program::takeBackdrop(GObjectPtr<GdkTexture> picture) {
  backdrop_.take(std::move(picture));
  forEachWindow(&ToolkitWindow::updateGround);
}

boost::json::array Program::screen() const {
  return {toldScreen_.x, toldScreen_.y, toldScreen_.width, toldScreen_.height};
}

void Program::tellScreen() {
  const Frame now = coveredFrame(game_);
  if (now == toldScreen_) return;
  toldScreen_ = now;
  events_({{member::kType, event::kScreen}, {member::kScreen, screen()}});
}

GameWindow::Listener Program::gameListener() {
  return {.moved =
              [this] {
                tellScreen();
                forEachWindow(&ToolkitWindow::gameMoved);
              },
          .minimised = [this] { forEachWindow(&ToolkitWindow::gameMinimised); },
          .restored = [this] { forEachWindow(&ToolkitWindow::gameRestored); }};
}

void Program::forEachWindow(void (ToolkitWindow::*act)()) {
  for (const auto& [id, window] : windows_) ((*window).*act)();
}

void Program::openWindow(Id id, Id rootView, const Frame& frame) {
  if (windows_.contains(id) || views_.find(rootView) != nullptr) return;
  GtkWidget* root = newContainerView();
  views_.add(rootView, root);
  auto painted = [this, id] {
    constraints_.settle();
    if (const ToolkitWindow* opened = window(id))
      views_.reportFrames(id, opened->widget(), events_);
  };
  auto window =
      std::make_unique<ToolkitWindow>(id, root, frame, game_, backdrop_, events_, painted);
  watchPlayer(window->widget(),
              [this] { openLimit_.playerActed(std::chrono::steady_clock::now()); });
  windows_.emplace(id, std::move(window));
}

void Program::closeWindow(Id id) {
  const auto found = windows_.find(id);
  if (found == windows_.end()) return;
  const std::unique_ptr<ToolkitWindow> closing = std::move(found->second);
  windows_.erase(found);
  // Off the screen before anything else: a tap that follows the keyboard is meant for the game.
  const bool wasShown = closing->isShown();
  closing->hide();
  if (wasShown) passKeyboardOn();
  views_.dropAllIn(closing->widget());
  if (shownInFront() == nullptr) dropBackdrop();
}

void Program::dropBackdrop() {
  backdrop_.drop();
  forEachWindow(&ToolkitWindow::updateGround);
}

void Program::passKeyboardOn() const {
  if (ToolkitWindow* const front = shownInFront()) return front->show();
  game_.activate();
}

void Program::pressPad(const std::string& press, const std::string& pressName,
                       const std::string& leaveName) {
  ToolkitWindow* const front = shownInFront();
  if (front == nullptr) return;
  openLimit_.playerActed(std::chrono::steady_clock::now());
  front->padLine().show(pressName + "  " + padTextOf(*front, "padPress", "Choose") + "      " +
                        leaveName + "  " + padTextOf(*front, "padLeave", "Close"));
  padQueue_.add([this, press](const PadQueue::Done& done) { carryOut(press, done); });
}

void Program::carryOut(const std::string& press, const PadQueue::Done& done) const {
  const ToolkitWindow* const front = shownInFront();
  if (front == nullptr) return done();
  auto* const window = GTK_WINDOW(front->widget());
  const ToolkitWebView* const inFront = webViewIn(front->id());
  WebKitWebView* const page = inFront == nullptr ? nullptr : inFront->view();
  if (const auto direction = padDirection(press)) return movePad(window, page, *direction, done);
  if (press == word::kPress) return zovk::helper::pressPad(window, page, done);
  if (press == word::kLeave) return leavePad(window, page, done);
  done();
}

ToolkitWindow* Program::shownInFront() const {
  const auto front = std::find_if(windows_.rbegin(), windows_.rend(),
                                  [](const auto& entry) { return entry.second->isShown(); });
  return front == windows_.rend() ? nullptr : front->second.get();
}

std::string Program::padTextOf(const ToolkitWindow& window, const char* name,
                               const char* usual) const {
  for (const auto& [id, layout] : layouts_) {
    GtkWidget* const root = layout->root();
    const bool inside = root != nullptr && gtk_widget_is_ancestor(root, window.widget());
    std::string text = inside ? layout->text(name) : "";
    if (!text.empty()) return text;
  }
  return usual;
}

ToolkitWindow* Program::window(Id id) const {
  return findIn(windows_, id);
}

void Program::openLayout(Id id, Id rootView, const std::string& bundle, const std::string& name) {
  if (layouts_.contains(id)) return;
  auto perform = [this, id](const std::string& action) {
    events_({{member::kType, event::kAction}, {member::kLayout, id}, {member::kAction, action}});
  };
  auto layout = std::make_unique<ToolkitLayout>(bundle, name, perform);
  if (layout->root() != nullptr) views_.add(rootView, layout->root(), id);
  boost::json::array outlets;
  for (const std::string& outlet : layout->outletNames()) outlets.emplace_back(outlet);
  events_({{member::kType, event::kLayoutLoaded},
           {member::kLayout, id},
           {member::kFound, layout->root() != nullptr},
           {member::kOutlets, outlets}});
  layouts_.emplace(id, std::move(layout));
}

void Program::closeLayout(Id id) {
  const auto found = layouts_.find(id);
  if (found == layouts_.end()) return;
  views_.dropLayout(id);
  layouts_.erase(found);
  views_.dropReleased();
}

ToolkitLayout* Program::layout(Id id) const {
  return findIn(layouts_, id);
}

void Program::openWebView(Id id, const WebViewWishes& wishes,
                          const std::vector<std::string>& handlers) {
  if (views_.find(id) != nullptr) return;
  GObjectPtr<WebKitWebView> view = webViewFactory_.make(wishes);
  guardPage(view.get(), developerTools_);
  const auto progress = [this](GtkWidget* page, double loaded) {
    for (const auto& [number, shown] : windows_) shown->progress().update(page, loaded);
  };
  auto made = std::make_unique<ToolkitWebView>(id, std::move(view), handlers, events_, progress,
                                               webViewFactory_.refusal(), drawing_);
  if (!wishes.opaque) made->setBackground({0, 0, 0, 0});
  openLimit_.webViewMade();
  views_.add(id, made->widget());
  webViews_.emplace(id, std::move(made));
}

ToolkitWebView* Program::webView(Id id) const {
  return findIn(webViews_, id);
}

const ToolkitWebView* Program::webViewIn(Id windowId) const {
  const ToolkitWindow* shown = window(windowId);
  for (const auto& [id, candidate] : webViews_) {
    const bool inside = shown != nullptr && gtk_widget_get_mapped(candidate->widget()) &&
                        gtk_widget_is_ancestor(candidate->widget(), shown->widget());
    if (inside) return candidate.get();
  }
  return nullptr;
}

void Program::onViewDropped(Id id, GtkWidget* widget) {
  constraints_.remove(widget);
  const auto found = webViews_.find(id);
  if (found == webViews_.end()) return;
  if (isContainerView(gtk_widget_get_parent(widget))) gtk_widget_unparent(widget);
  webViews_.erase(found);
  prepareSpareWhenIdle();
}

void Program::prepareSpare() {
  const Frame covered = coveredFrame(game_);
  webViewFactory_.prepareSpare(covered);
  pictureMemory_.keep(webViewFactory_.spareWindow(), covered);
}

void Program::prepareSpareWhenIdle() {
  if (!idle_.active()) idle_ = SourceGuard(g_idle_add(onIdle, this));
}

gboolean Program::onIdle(gpointer self) {
  auto* program = static_cast<Program*>(self);
  program->idle_.forget();
  if (program->webViews_.empty()) program->prepareSpare();
  return G_SOURCE_REMOVE;
}

}  // namespace zovk::helper
