#include "helper/window/PopupPlace.h"

#include <cstdlib>
#include <utility>

#include <gdk/x11/gdkx.h>

#include "helper/window/GameWindow.h"
#include "helper/window/Screen.h"

namespace zovk::helper {
namespace {

bool isEmpty(const Frame& frame) {
  return frame.width <= 0 || frame.height <= 0;
}

bool covers(const Frame& frame, GameWindow& game) {
  const Frame all = coveredFrame(game);
  return isEmpty(frame) || (frame.width >= all.width && frame.height >= all.height);
}

/// The session of handhelds puts a managed window in the game's place; one that is not managed is
/// laid over it.
bool isHandheldSession() {
  return std::getenv("GAMESCOPE_WAYLAND_DISPLAY") != nullptr;
}

/// On sway a window without a parent would push the game aside.
bool wouldPushGameAside(GameWindow& game) {
  return isSwayRunning() && x11Display() == nullptr && !game.waylandParent().isKnown();
}

bool needsFullScreen(GameWindow& game) {
  return game.wholeScreen() || game.wasPopupElsewhere() || wouldPushGameAside(game);
}

/// Wayland compositors draw nothing below full-screen windows, and some, like sway and those that
/// put popups elsewhere, not in X11 windows either.
bool hidesBelowFullScreen(const GameWindow& game) {
  return x11Display() == nullptr || isSwayRunning() || game.wasPopupElsewhere();
}

GdkRectangle rectangleOf(const Frame& frame) {
  return {frame.x, frame.y, frame.width, frame.height};
}

/// Returns whether `frame` covers all of `other` that is in `area`.
bool coversWithin(const Frame& area, const Frame& frame, const Frame& other) {
  const GdkRectangle whole = rectangleOf(area);
  const GdkRectangle cover = rectangleOf(frame);
  GdkRectangle seen = rectangleOf(other);
  GdkRectangle covered{};
  if (gdk_rectangle_intersect(&seen, &whole, &seen) == FALSE) return true;
  return gdk_rectangle_intersect(&seen, &cover, &covered) == TRUE &&
         gdk_rectangle_equal(&seen, &covered) == TRUE;
}

bool isBlended() {
  return gdk_display_is_composited(gdk_display_get_default()) == TRUE;
}

}  // namespace

PopupPlace::PopupPlace(GtkWindow* window, const Frame& frame, GameWindow& game,
                       std::function<void()> cameUp)
    : window_(window),
      game_(game),
      frame_(frame),
      sway_(std::move(cameUp)),
      coversGame_(covers(frame, game)),
      way_(firstWay()) {
  const Frame size = wanted();
  gtk_window_set_default_size(window_, size.width, size.height);
}

PopupPlace::Way PopupPlace::firstWay() const {
  if (!coversGame_) return Way::kOwnFrame;
  if (needsFullScreen(game_)) return Way::kFullScreen;
  // On Wayland a window of the screen's size is seen through where a full-screen one is not.
  const bool hasPlace = !isEmpty(game_.frame()) || x11Display() == nullptr;
  return hasPlace ? Way::kGameFrame : Way::kFullScreen;
}

Frame PopupPlace::wanted() const {
  switch (way_) {
    case Way::kOwnFrame:
      return frame_;
    case Way::kGameFrame:
      return detached_ && remembered_ ? *remembered_ : coveredFrame(game_);
    case Way::kFullScreen:
      break;
  }
  return monitorFrame(game_);
}

void PopupPlace::prepare() {
  const std::string title = game_.window() ? game_.window()->title() : std::string();
  gtk_window_set_title(window_, title.empty() ? g_get_application_name() : title.c_str());
  const auto own = x11WindowOf(window_);
  if (own) {
    GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window_));
    gdk_x11_surface_set_user_time(surface, gdk_x11_get_server_time(surface));
    own->setDialog();
    if (game_.window() && !detached_) own->setTransientFor(game_.window()->id());
  }
  game_.waylandParent().prepare(window_);
  asked_.reset();
  if (way_ == Way::kFullScreen) return goFullScreen();
  const Frame frame = wanted();
  gtk_window_set_default_size(window_, frame.width, frame.height);
  if (own) {
    // A size from the start: some displays never give one to a window that has none, and do not
    // listen before it is shown.
    own->setUnmanaged(true);
    moveTo(frame);
    own->setUnmanaged(isHandheldSession());
  }
  asked_.reset();
}

void PopupPlace::goFullScreen() {
  const GObjectPtr<GdkMonitor> monitor = monitorOf(game_);
  // Only X11 says where the game is; elsewhere the display knows better than we do.
  if (!monitor || !game_.window()) return gtk_window_fullscreen(window_);
  gtk_window_fullscreen_on_monitor(window_, monitor.get());
}

void PopupPlace::settle() {
  game_.waylandParent().settle(window_);
  if (!x11WindowOf(window_)) return;
  // The page's load, whose messages come before it, goes on meanwhile.
  settling_ = SourceGuard(g_idle_add_full(G_PRIORITY_DEFAULT, onSettled, this, nullptr));
}

gboolean PopupPlace::onSettled(gpointer self) {
  auto* place = static_cast<PopupPlace*>(self);
  place->settling_.forget();
  place->takePlace();
  return G_SOURCE_REMOVE;
}

void PopupPlace::takePlace() {
  takeKeyboard();
  // Without a window manager nothing else makes it as large as the screen.
  if (way_ != Way::kFullScreen || !isManaged()) moveTo(wanted());
}

void PopupPlace::comeUp() {
  // Sway raises what it gives the keyboard to, and gives up windows that it does not manage even
  // for a moment.
  if (isSwayRunning()) return;
  const auto own = x11WindowOf(window_);
  if (!own || !game_.window() || !isManaged() || !own->isBelow(game_.window()->id())) return;
  own->raise();
  // A move tells the window manager that the window is one of its own again.
  asked_.reset();
  moveTo(wanted());
}

void PopupPlace::takeKeyboard() {
  if (const auto own = x11WindowOf(window_); own && !isManaged()) own->takeKeyboard();
  if (isSwayRunning()) sway_.ask();
}

bool PopupPlace::isManaged() const {
  const bool leftAlone = x11WindowOf(window_) && isHandheldSession();
  return !leftAlone && (x11Display() == nullptr ||
                        x11HasWindowManager(gtk_widget_get_display(GTK_WIDGET(window_))));
}

void PopupPlace::follow() {
  if (way_ != Way::kGameFrame || detached_ || isEmpty(game_.frame())) return;
  const auto own = x11WindowOf(window_);
  if (!own) return gtk_window_set_default_size(window_, wanted().width, wanted().height);
  moveTo(wanted());
  const auto workSpace = game_.window()->workSpace();
  if (workSpace && own->workSpace() && own->workSpace() != workSpace) {
    own->askForWorkSpace(*workSpace);
  }
}

void PopupPlace::monitorsChanged() {
  if (way_ == Way::kGameFrame) return follow();
  // A window manager gives full-screen windows their new place by itself.
  if (way_ == Way::kFullScreen && x11WindowOf(window_) && !isManaged()) moveTo(wanted());
}

void PopupPlace::moveTo(const Frame& frame) {
  if (asked_ == frame) return;
  asked_ = frame;
  const int scale = gtk_widget_get_scale_factor(GTK_WIDGET(window_));
  x11WindowOf(window_)->moveResize(
      {frame.x * scale, frame.y * scale, frame.width * scale, frame.height * scale});
}

void PopupPlace::detach() {
  detached_ = true;
  const auto own = x11WindowOf(window_);
  if (!own) return;
  own->endTransience();
  if (remembered_) moveTo(*remembered_);
}

void PopupPlace::attach() {
  detached_ = false;
  const auto own = x11WindowOf(window_);
  if (own && game_.window()) own->setTransientFor(game_.window()->id());
}

bool PopupPlace::isFullScreen() const {
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window_));
  const bool given = GDK_IS_TOPLEVEL(surface) && (gdk_toplevel_get_state(GDK_TOPLEVEL(surface)) &
                                                  GDK_TOPLEVEL_STATE_FULLSCREEN) != 0;
  return given || way_ == Way::kFullScreen;
}

bool PopupPlace::hidesGame() const {
  return !isBlended() || (hidesBelowFullScreen(game_) && isFullScreen());
}

bool PopupPlace::willHide(GameWindow& game) {
  return !isBlended() || (needsFullScreen(game) && hidesBelowFullScreen(game));
}

bool PopupPlace::isElsewhere() const {
  const auto own = x11WindowOf(window_);
  if (!own || way_ != Way::kGameFrame || detached_) return false;
  return !coversWithin(monitorFrame(game_), own->logicalFrame(), wanted());
}

bool PopupPlace::fallBack() {
  if (way_ != Way::kGameFrame) return false;
  if (isElsewhere()) game_.popupWasElsewhere();
  way_ = Way::kFullScreen;
  return true;
}

}  // namespace zovk::helper
