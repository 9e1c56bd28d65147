#pragma once

#include <functional>
#include <memory>
#include <string>

#include <zovkpopup/Export.h>
#include <zovkpopup/platform/Geometry.h>
#include <zovkpopup/platform/WebView.h>

namespace zovk {

struct Platform;
class WebWindowController;
class Window;
class ZOVKPopupWKWebViewJavascriptBridge;

/// What a web window shows, and who hears of it. Exactly one of `address` and `pageFile` is given.
struct ZOVKPopupWebWindowSettings {
  /// An http or https address.
  std::string address;
  /// The absolute path of a page file, which may read, show and run no other file.
  std::string pageFile;
  /// Where the window stands on the screen, in logical pixels, where the display system lets
  /// windows be placed; the full screen when width and height are 0.
  Rect frame;
  /// False lets the game be seen where the page is clear, on screens that blend windows.
  bool opaque = true;
  /// A page has taken the place of the one before; the first one has, too. Messages sent from now
  /// on reach this page.
  std::function<void()> pageChanged;
  /// The window is gone because its helper program failed; said once, after it was closed.
  std::function<void(const std::string& reason)> failed;
  /// Decides on navigations and hears of them, but for those that are the bridge's own signals.
  /// Without one, all are allowed. It is not owned.
  std::weak_ptr<WebViewDelegate> navigationDelegate;
};

/// A window of the game's own with a web page in it, in front of the game, in the same helper
/// program that shows the popups. Game and page call each other's handlers over the bridge.
///
/// Main thread only, the thread that set the host up; every callback comes from the host's pump, so
/// handlers that are registered before the next pump miss nothing. Whoever opens a window owns it:
/// it closes when it is let go, or by `close`; both may happen within any of its callbacks. Once it
/// is closed no callback and no handler is called any more, except that a script under way hears an
/// error. A popup stands in front of it and gives it the keyboard back; the game's window gets the
/// keyboard when the last window closes.
///
/// When the page's process ends, the page is loaded again; when the helper ends, it is started
/// again once and brings the window back. The bridge is then as new: callbacks that waited for the
/// old page are dropped, and messages wait until the new one asks for the bridge. It is the same
/// when the page is left for another one or loaded anew.
///
/// The window has no button of its own: a page that covers the screen must offer a way out, and a
/// game should close a window whose page fails to load.
class ZOVKPOPUP_API ZOVKPopupWebWindow final {
 public:
  /// Opens a window and begins to load its page. Null, with one error line, when the host is not
  /// set up, was shut down or has another main thread, or when the settings make no sense.
  static std::unique_ptr<ZOVKPopupWebWindow> open(const ZOVKPopupWebWindowSettings& settings);
  ~ZOVKPopupWebWindow();
  ZOVKPopupWebWindow(const ZOVKPopupWebWindow&) = delete;
  ZOVKPopupWebWindow& operator=(const ZOVKPopupWebWindow&) = delete;

  /// False after `close`, after a failure and after the host's shut down.
  bool isOpen() const;
  /// The page's bridge, of <zovkpopup/Bridge.h>. It is there as long as this object; in a closed
  /// window it reaches nobody. The window is its delegate: a delegate of the game's own goes into
  /// the settings. Handlers are let go when the window closes.
  ZOVKPopupWKWebViewJavascriptBridge& bridge() { return *bridge_; }
  /// Loads the page anew.
  void reload();
  /// Runs a script in the page. `completion`, which may be empty, hears its result or an error,
  /// unless the host is shut down before.
  void evaluate(const std::string& script, std::function<void(ScriptResult)> completion);
  void close();

 private:
  explicit ZOVKPopupWebWindow(const ZOVKPopupWebWindowSettings& settings,
                              std::shared_ptr<Platform> platform);
  void fail(const std::string& reason);

  const std::shared_ptr<Platform> platform_;
  const std::function<void(const std::string& reason)> failed_;
  std::shared_ptr<ZOVKPopupWKWebViewJavascriptBridge> bridge_;
  std::shared_ptr<WebWindowController> controller_;
  std::shared_ptr<Window> window_;
};

}  // namespace zovk
