#include "helper/window/ToolkitWindow.h"

#include <string>
#include <string_view>
#include <utility>

#include "helper/layout/DesktopTheme.h"
#include "helper/layout/TabOrder.h"
#include "helper/layout/ViewStyle.h"
#include "helper/window/Backdrop.h"
#include "helper/window/GameWindow.h"
#include "helper/window/X11Window.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

/// How long the game waits for a paint that does not come, when the window is covered, say.
constexpr guint kPaintMilliseconds = 1000;

/// A game that is minimised so soon after a popup took the keyboard did it for that reason.
constexpr gint64 kMinimisesForKeyboard = G_USEC_PER_SEC;

/// Makes a window that screen readers call a dialog. A window cannot become one later.
GtkWindow* newDialog() {
  return GTK_WINDOW(g_object_ref_sink(
      g_object_new(GTK_TYPE_WINDOW, "accessible-role", GTK_ACCESSIBLE_ROLE_DIALOG, nullptr)));
}

/// Says what is missing from a popup that did not come up.
std::string_view wordFor(ShowWatch::State state) {
  switch (state) {
    case ShowWatch::State::kSlow:
      return "not drawn";
    case ShowWatch::State::kElsewhere:
      return "not at its place";
    case ShowWatch::State::kWithoutKeyboard:
      return "without the keyboard";
    case ShowWatch::State::kStuck:
      return "without a size";
    case ShowWatch::State::kUp:
      break;
  }
  return "up";
}

}  // namespace

ToolkitWindow::ToolkitWindow(Id id, GtkWidget* root, const Frame& frame, GameWindow& game,
                             Backdrop& backdrop, EventSink events, std::function<void()> painted)
    : id_(id),
      game_(game),
      backdrop_(backdrop),
      events_(std::move(events)),
      painted_(std::move(painted)),
      window_(newDialog()),
      progress_(root),
      padLine_(GTK_OVERLAY(progress_.widget())),
      ground_(progress_.widget()),
      place_(window_, frame, game, [this] { takeFreeKeyboard(); }),
      monitor_(window_),
      escape_(window_),
      showWatch_({.look = [this] { return progressOfShowing(); },
                  .askForKeyboard = [this] { askForKeyboard(); },
                  .stuck = [this](ShowWatch::State state) { showAnotherWay(state); }}) {
  gtk_window_set_decorated(window_, FALSE);
  gtk_window_set_child(window_, ground_.widget());
  keepTabSteps(window_);
  markHighContrast(window_);
  setBackground({0, 0, 0, 0});
}

ToolkitWindow::~ToolkitWindow() {
  hide();
  finishWaiting();
  gtk_window_set_child(window_, nullptr);
  gtk_window_destroy(window_);
  g_object_unref(window_);
}

void ToolkitWindow::connectSignals() {
  g_signal_connect(window_, "close-request", G_CALLBACK(onCloseRequest), this);
  g_signal_connect(window_, "notify::is-active", G_CALLBACK(onActiveChanged), this);
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window_));
  g_signal_connect(surface, "layout", G_CALLBACK(onLayout), this);
  g_signal_connect(surface, "notify::state", G_CALLBACK(onStateChanged), this);
  monitor_.start();
  clock_ = GObjectPtr<GdkFrameClock>::retain(gtk_widget_get_frame_clock(widget()));
  g_signal_connect(clock_.get(), "after-paint", G_CALLBACK(onAfterPaint), this);
}

void ToolkitWindow::disconnectSignals() {
  monitor_.stop();
  g_signal_handlers_disconnect_by_data(clock_.get(), this);
  g_signal_handlers_disconnect_by_data(gtk_native_get_surface(GTK_NATIVE(window_)), this);
  g_signal_handlers_disconnect_by_data(window_, this);
}

void ToolkitWindow::setBackground(const GdkRGBA& color) {
  zovk::helper::setBackground(widget(), color);
}

void ToolkitWindow::show() {
  // New windows are given the keyboard. A window manager that is asked for it besides may take
  // another window's full screen away.
  if (shown_ && showWatch_.active()) return;
  if (shown_) return askForKeyboard();
  // Not before: GTK fails on a window that is destroyed before it was ever shown.
  gtk_widget_realize(widget());
  connectSignals();
  isPainted_ = false;
  place_.prepare();
  shown_ = true;
  updateGround();
  gtk_widget_set_visible(widget(), TRUE);
  place_.settle();
  showWatch_.begin();
}

void ToolkitWindow::askForKeyboard() {
  gtk_window_present(window_);
  place_.takeKeyboard();
}

void ToolkitWindow::hide() {
  if (!std::exchange(shown_, false)) return;
  showWatch_.end();
  disconnectSignals();
  gtk_widget_set_visible(widget(), FALSE);
}

void ToolkitWindow::updateGround() {
  const bool hides = shown_ && place_.hidesGame();
  ground_.setDark(hides);
  const bool standsForGame = hides && place_.coversGame();
  if (standsForGame) backdrop_.want();
  ground_.setPicture(standsForGame ? backdrop_.picture() : nullptr);
}

void ToolkitWindow::gameMoved() {
  if (shown_) place_.follow();
}

void ToolkitWindow::gameMinimised() {
  const bool forKeyboard = g_get_monotonic_time() - tookKeyboard_ < kMinimisesForKeyboard;
  if (!shown_ || !forKeyboard || !place_.coversGame()) return;
  // A window in front of a minimised one is minimised with it.
  place_.detach();
  gtk_window_present(window_);
}

void ToolkitWindow::gameRestored() {
  if (!shown_ || !place_.isDetached()) return;
  place_.attach();
  place_.follow();
}

void ToolkitWindow::monitorsChanged() {
  if (!shown_) return;
  place_.monitorsChanged();
  monitor_.look();
}

bool ToolkitWindow::mayHaveKeyboard() const {
  // Other programs may keep the keyboard, and so may a game that the player has put away. If
  // nothing reports that, a popup without it stays as it is once it has the whole screen.
  return game_.hasKeyboard().value_or(!place_.isLastWay());
}

bool ToolkitWindow::lacksKeyboard() const {
  return gtk_window_is_active(window_) == FALSE && mayHaveKeyboard();
}

void ToolkitWindow::takeFreeKeyboard() {
  if (shown_ && lacksKeyboard()) place_.takeKeyboard();
}

ShowWatch::State ToolkitWindow::progressOfShowing() const {
  const bool isPutAway = game_.window() && !place_.isDetached() && !game_.window()->isViewable();
  if (isPutAway) return ShowWatch::State::kUp;
  if (width_ <= 1 || height_ <= 1) return ShowWatch::State::kStuck;
  if (!isPainted_) return ShowWatch::State::kSlow;
  if (place_.isElsewhere()) return ShowWatch::State::kElsewhere;
  return lacksKeyboard() ? ShowWatch::State::kWithoutKeyboard : ShowWatch::State::kUp;
}

void ToolkitWindow::showAnotherWay(ShowWatch::State state) {
  if (!place_.fallBack()) {
    const std::string_view display = x11Display() != nullptr ? word::kX11 : word::kWayland;
    return events_({{member::kType, event::kWindowStuck},
                    {member::kWindow, id_},
                    {member::kDisplay, display}});
  }
  sendLog(events_, "helper: the popup did not come up (" + std::string(wordFor(state)) +
                       "), trying the whole screen");
  hide();
  show();
}

void ToolkitWindow::whenPainted(std::function<void()> next) {
  if (!shown_) return next();
  Waiting& waiting = waiting_.emplace_back(Waiting{this, std::move(next), {}});
  waiting.deadline = SourceGuard(g_timeout_add(kPaintMilliseconds, onDeadline, &waiting));
  gtk_widget_queue_draw(widget());
}

void ToolkitWindow::finishWaiting() {
  std::list<Waiting> done;
  done.swap(waiting_);
  for (const Waiting& waiting : done) waiting.next();
}

gboolean ToolkitWindow::onDeadline(gpointer data) {
  auto* waiting = static_cast<Waiting*>(data);
  waiting->deadline.forget();
  waiting->window->finishWaiting();
  return G_SOURCE_REMOVE;
}

gboolean ToolkitWindow::onCloseRequest(GtkWindow*, gpointer) {
  return TRUE;
}

void ToolkitWindow::onActiveChanged(GObject* window, GParamSpec*, gpointer self) {
  auto* own = static_cast<ToolkitWindow*>(self);
  const bool active = gtk_window_is_active(GTK_WINDOW(window)) == TRUE;
  if (active) {
    own->tookKeyboard_ = g_get_monotonic_time();
    own->place_.remember();
  }
  own->showWatch_.notice();
  own->events_(
      {{member::kType, event::kWindowKey}, {member::kWindow, own->id_}, {member::kKey, active}});
}

void ToolkitWindow::onStateChanged(GObject*, GParamSpec*, gpointer self) {
  static_cast<ToolkitWindow*>(self)->updateGround();
}

void ToolkitWindow::onLayout(GdkSurface*, int width, int height, gpointer self) {
  auto* own = static_cast<ToolkitWindow*>(self);
  if (own->width_ == width && own->height_ == height) return;
  const bool isAnother = own->width_ > 1 && own->height_ > 1;
  if (isAnother && own->place_.hidesGame() && own->place_.coversGame()) {
    own->backdrop_.wantAgain();
  }
  own->width_ = width;
  own->height_ = height;
  own->events_({{member::kType, event::kWindowSize},
                {member::kWindow, own->id_},
                {member::kWidth, width},
                {member::kHeight, height},
                {member::kSafeArea, {0, 0, 0, 0}}});
}

void ToolkitWindow::onAfterPaint(GdkFrameClock*, gpointer self) {
  auto* own = static_cast<ToolkitWindow*>(self);
  const bool isFirst = !std::exchange(own->isPainted_, true);
  if (isFirst) own->place_.comeUp();
  if (isFirst) own->monitor_.look();
  if (isFirst) own->takeFreeKeyboard();
  own->showWatch_.notice();
  own->painted_();
  own->finishWaiting();
}

}  // namespace zovk::helper
