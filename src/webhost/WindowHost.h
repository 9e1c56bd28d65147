#pragma once

#include <functional>
#include <list>

#include <gtk/gtk.h>

#include "webhost/Arguments.h"
#include "webhost/EscapeKey.h"
#include "webhost/Events.h"
#include "webhost/GObjectPtr.h"
#include "webhost/ProgressLine.h"

namespace zovk {

class GameWindow;

/// One popup window. It has no decorations and closes only when the game says so.
class WindowHost {
 public:
  /// `painted` is called after each time the window was arranged and painted.
  WindowHost(Id id, GtkWidget* root, const Frame& frame, EventSink events,
             std::function<void()> painted);
  ~WindowHost();
  WindowHost(const WindowHost&) = delete;
  WindowHost& operator=(const WindowHost&) = delete;

  GtkWidget* widget() const { return GTK_WIDGET(window_); }
  bool isShown() const { return shown_; }
  void show(const GameWindow& game);
  void hide();
  void setBackground(const GdkRGBA& color);
  ProgressLine& progress() { return progress_; }
  /// Runs `next` once the window has been painted with all that was changed so far: at once when
  /// it is not shown, and after a while when the display does not paint it.
  void whenPainted(std::function<void()> next);

 private:
  struct Waiting {
    WindowHost* window;
    std::function<void()> next;
    SourceGuard deadline;
  };
  static gboolean onCloseRequest(GtkWindow* window, gpointer self);
  static void onActiveChanged(GObject* window, GParamSpec* property, gpointer self);
  static void onLayout(GdkSurface* surface, int width, int height, gpointer self);
  static void onAfterPaint(GdkFrameClock* clock, gpointer self);
  static gboolean onDeadline(gpointer waiting);
  void connectSignals();
  void disconnectSignals();
  void place();
  void finishWaiting();

  Id id_;
  Frame frame_;
  EventSink events_;
  std::function<void()> painted_;
  GtkWindow* window_;
  ProgressLine progress_;
  EscapeKey escape_;
  GObjectPtr<GdkFrameClock> clock_;
  std::list<Waiting> waiting_;
  int width_ = 0;
  int height_ = 0;
  bool shown_ = false;
  bool fullScreen_ = false;
};

/// The main screen; empty when there is none.
Frame mainScreen();

}  // namespace zovk
