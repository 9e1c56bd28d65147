#pragma once

#include <functional>
#include <list>

#include <gtk/gtk.h>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"
#include "helper/commands/Arguments.h"
#include "helper/pad/PadLine.h"
#include "helper/window/EscapeKey.h"
#include "helper/window/Ground.h"
#include "helper/window/PopupPlace.h"
#include "helper/window/ProgressLine.h"
#include "helper/window/ShowWatch.h"
#include "helper/window/SurfaceMonitor.h"

namespace zovk::helper {

class Backdrop;
class GameWindow;

/// One popup window. It has no decorations, and closes only when the game asks for it.
class ToolkitWindow {
 public:
  /// `painted` is called each time after the window was arranged and painted.
  ToolkitWindow(Id id, GtkWidget* root, const Frame& frame, GameWindow& game, Backdrop& backdrop,
                EventSink events, std::function<void()> painted);
  ~ToolkitWindow();
  ToolkitWindow(const ToolkitWindow&) = delete;
  ToolkitWindow& operator=(const ToolkitWindow&) = delete;

  GtkWidget* widget() const { return GTK_WIDGET(window_); }
  Id id() const { return id_; }
  bool isShown() const { return shown_; }
  void show();
  void hide();
  /// Reports that the game's window moved, was minimised, or came back.
  void gameMoved();
  void gameMinimised();
  void gameRestored();
  /// Reports that a monitor came, went or changed.
  void monitorsChanged();
  /// Reports a change of what is seen through the window, or of the game's frame that is shown
  /// instead.
  void updateGround();
  void setBackground(const GdkRGBA& color);
  ProgressLine& progress() { return progress_; }
  PadLine& padLine() { return padLine_; }
  /// Runs `next` once the window has been painted with all changes so far: at once if it is not
  /// shown, and after a while if the display does not paint it.
  void whenPainted(std::function<void()> next);

 private:
  struct Waiting {
    ToolkitWindow* window;
    std::function<void()> next;
    SourceGuard deadline;
  };
  static gboolean onCloseRequest(GtkWindow* window, gpointer self);
  static void onActiveChanged(GObject* window, GParamSpec* property, gpointer self);
  static void onStateChanged(GObject* surface, GParamSpec* property, gpointer self);
  static void onLayout(GdkSurface* surface, int width, int height, gpointer self);
  static void onAfterPaint(GdkFrameClock* clock, gpointer self);
  static gboolean onDeadline(gpointer waiting);
  void connectSignals();
  void disconnectSignals();
  void finishWaiting();
  ShowWatch::State progressOfShowing() const;
  bool mayHaveKeyboard() const;
  bool lacksKeyboard() const;
  void takeFreeKeyboard();
  void showAnotherWay(ShowWatch::State state);
  void askForKeyboard();

  Id id_;
  GameWindow& game_;
  Backdrop& backdrop_;
  EventSink events_;
  std::function<void()> painted_;
  GtkWindow* window_;
  ProgressLine progress_;
  PadLine padLine_;
  Ground ground_;
  PopupPlace place_;
  SurfaceMonitor monitor_;
  EscapeKey escape_;
  ShowWatch showWatch_;
  GObjectPtr<GdkFrameClock> clock_;
  std::list<Waiting> waiting_;
  int width_ = 0;
  int height_ = 0;
  bool shown_ = false;
  bool isPainted_ = false;   // since it was shown
  gint64 tookKeyboard_ = 0;  // by the clock of the main loop, in microseconds
};

}  // namespace zovk::helper
