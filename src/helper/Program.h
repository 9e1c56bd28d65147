#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "helper/Drawing.h"
#include "helper/Events.h"
#include "helper/commands/Greeting.h"
#include "helper/layout/ConstraintBook.h"
#include "helper/layout/ToolkitLayout.h"
#include "helper/layout/ViewRegistry.h"
#include "helper/pad/PadQueue.h"
#include "helper/page/LoadHaste.h"
#include "helper/page/OpenLimit.h"
#include "helper/page/ToolkitWebView.h"
#include "helper/page/WebViewFactory.h"
#include "helper/window/Backdrop.h"
#include "helper/window/GameWindow.h"
#include "helper/window/HeldSensor.h"
#include "helper/window/MonitorsWatch.h"
#include "helper/window/PictureMemory.h"
#include "helper/window/ToolkitWindow.h"

namespace zovk::helper {

/// Everything that the game has made in this process, by number.
class Program {
 public:
  /// Requires a display.
  Program(const Greeting& greeting, EventSink events, Drawing drawing = Drawing::kPlain);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  const EventSink& events() const { return events_; }
  GameWindow& game() { return game_; }
  /// Returns the area that popups cover, in the form of events.
  boost::json::array screen() const;
  ViewRegistry& views() { return views_; }
  ConstraintBook& constraints() { return constraints_; }
  WebViewFactory& webViewFactory() { return webViewFactory_; }
  LoadHaste& loadHaste() { return loadHaste_; }
  OpenLimit& openLimit() { return openLimit_; }

  /// Tells the game in advance that its last frame will be needed, if that is known.
  void askForBackdropAhead();
  /// Makes the page that is held ready.
  void prepareSpare();
  void takeBackdrop(GObjectPtr<GdkTexture> picture);
  void openWindow(Id id, Id rootView, const Frame& frame);
  void closeWindow(Id id);
  /// Passes a press of a game pad, a direction, "press" or "leave", to the newest window that is
  /// shown. The names are those of the buttons for press and leave.
  void pressPad(const std::string& press, const std::string& pressName,
                const std::string& leaveName);
  /// Returns a window; null if there is none.
  ToolkitWindow* window(Id id) const;

  void openLayout(Id id, Id rootView, const std::string& bundle, const std::string& name);
  void closeLayout(Id id);
  ToolkitLayout* layout(Id id) const;

  void openWebView(Id id, const WebViewWishes& wishes, const std::vector<std::string>& handlers);
  ToolkitWebView* webView(Id id) const;
  /// Returns a web view in a shown window; null if there is none.
  const ToolkitWebView* webViewIn(Id windowId) const;

 private:
  static gboolean onIdle(gpointer self);
  void onViewDropped(Id id, GtkWidget* widget);
  void prepareSpareWhenIdle();
  void dropBackdrop();
  void carryOut(const std::string& press, const PadQueue::Done& done) const;
  /// Returns the newest window that is shown; null if there is none.
  ToolkitWindow* shownInFront() const;
  std::string padTextOf(const ToolkitWindow& window, const char* name, const char* usual) const;
  /// Passes the keyboard to the newest window that is shown, or else to the game.
  void passKeyboardOn() const;
  GameWindow::Listener gameListener();
  void forEachWindow(void (ToolkitWindow::*act)());
  /// Reports the area to cover, if it has changed.
  void tellScreen();

  EventSink events_;
  bool developerTools_;
  Drawing drawing_;
  GameWindow game_;
  Backdrop backdrop_;
  WebViewFactory webViewFactory_;
  PictureMemory pictureMemory_;
  LoadHaste loadHaste_;
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
  MonitorsWatch monitors_;
};

}  // namespace zovk::helper
