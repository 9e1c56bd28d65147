#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "helper/Backdrop.h"
#include "helper/ConstraintBook.h"
#include "helper/Drawing.h"
#include "helper/Events.h"
#include "helper/GameWindow.h"
#include "helper/HeldSensor.h"
#include "helper/OpenLimit.h"
#include "helper/PadQueue.h"
#include "helper/ToolkitLayout.h"
#include "helper/ToolkitWebView.h"
#include "helper/ToolkitWindow.h"
#include "helper/ViewRegistry.h"
#include "helper/WebViewFactory.h"

namespace zovk::helper {

/// What the game said about itself.
struct Greeting {
  std::string application;
  std::string dataDirectory;
  unsigned long nativeWindow = 0;
  bool developerTools = false;
  std::int64_t pageMemory = 0;  ///< In megabytes.
  std::string waylandWindow{};  ///< The exported handle of the game's window; empty for none.
  Frame gameSize{};             ///< In logical pixels; empty when the game did not tell.
  std::string display{};        ///< The display system to use, "x11" or "wayland"; empty for any.
  DrawingWish drawing{};
  bool wholeScreen = false;  ///< Popups take it, whatever the size of the game's window.
  bool pageConsole = false;  ///< Pages' console lines go to standard output.
};

/// Everything that the game has made in this process, by number.
class Program {
 public:
  /// Needs a display.
  Program(const Greeting& greeting, EventSink events, Drawing drawing = Drawing::kPlain);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  const EventSink& events() const { return events_; }
  GameWindow& game() { return game_; }
  /// What popups cover, as events write it.
  boost::json::array screen() const;
  ViewRegistry& views() { return views_; }
  ConstraintBook& constraints() { return constraints_; }
  WebViewFactory& webViewFactory() { return webViewFactory_; }
  OpenLimit& openLimit() { return openLimit_; }

  /// Tells the game that its last frame will be wanted, where that is known beforehand.
  void askForBackdropAhead();
  /// The page that may come next is given up, or held ready again.
  void rest();
  void prepareSpareWhenIdle();
  void takeBackdrop(GObjectPtr<GdkTexture> picture);
  void openWindow(Id id, Id rootView, const Frame& frame);
  void closeWindow(Id id);
  /// A press of a game pad's, for the youngest window that is shown: a direction, "press" or
  /// "leave". The names are those of the buttons that press and leave.
  void pressPad(const std::string& press, const std::string& pressName,
                const std::string& leaveName);
  /// Null when there is none.
  ToolkitWindow* window(Id id) const;

  void openLayout(Id id, Id rootView, const std::string& bundle, const std::string& name);
  void closeLayout(Id id);
  ToolkitLayout* layout(Id id) const;

  void openWebView(Id id, const WebViewWishes& wishes, const std::vector<std::string>& handlers);
  ToolkitWebView* webView(Id id) const;
  /// A web view that stands in a shown window; null when there is none.
  const ToolkitWebView* webViewIn(Id windowId) const;

 private:
  static void onMonitorsChanged(GListModel* monitors, guint position, guint removed, guint added,
                                gpointer self);
  static gboolean onIdle(gpointer self);
  void onViewDropped(Id id, GtkWidget* widget);
  void dropBackdrop();
  void carryOut(const std::string& press, const PadQueue::Done& done) const;
  /// The youngest window that is shown; null when there is none.
  ToolkitWindow* shownInFront() const;
  std::string padTextOf(const ToolkitWindow& window, const char* name, const char* usual) const;
  /// To the youngest window that is shown, or else to the game.
  void passKeyboardOn() const;
  GameWindow::Listener gameListener();
  void forEachWindow(void (ToolkitWindow::*act)());
  /// Tells what there is to cover when that is another place than before.
  void tellScreen();

  EventSink events_;
  bool developerTools_;
  Drawing drawing_;
  GameWindow game_;
  Backdrop backdrop_;
  WebViewFactory webViewFactory_;
  OpenLimit openLimit_;
  ConstraintBook constraints_;
  std::map<Id, std::unique_ptr<ToolkitWindow>> windows_;
  std::map<Id, std::unique_ptr<ToolkitWebView>> webViews_;
  ViewRegistry views_;
  std::map<Id, std::unique_ptr<ToolkitLayout>> layouts_;
  SourceGuard idle_;
  Frame toldScreen_;
  PadQueue padQueue_;
  HeldSensor held_;
};

}  // namespace zovk::helper
