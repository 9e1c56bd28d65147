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

/// The contents and the callbacks of a web window. Set exactly one of `address` and `pageFile`.
struct ZOVKPopupWebWindowSettings {
  /// An http or https address.
  std::string address;
  /// The absolute path of a page file. It can read, show and run no other file.
  std::string pageFile;
  /// The window's place on the screen in logical pixels, on display systems where windows can be
  /// placed. Width and height 0 mean the full screen.
  Rect frame;
  /// False shows the game where the page is clear, on screens that blend windows.
  bool opaque = true;
  /// Called when a page has replaced the one before, and for the first page. Messages sent from now
  /// on reach this page.
  std::function<void()> pageChanged;
  /// Called once, after the window was closed because its helper program failed.
  std::function<void(const std::string& reason)> failed;
  /// Decides on navigations and receives their events, except for the bridge's own signals. Without
  /// a delegate, all navigations are allowed. The window does not own it.
  std::weak_ptr<WebViewDelegate> navigationDelegate;
};

/// A window in front of the game with a web page in it. The helper program that shows the popups
/// shows it, too. Game and page call each other's handlers over the bridge.
///
/// Main thread only: the thread that set the host up. Every callback comes from the host's pump, so
/// handlers that are registered before the next pump miss no message. The caller of `open` owns the
/// window. It closes when it is destroyed, or by `close`; both are allowed within any of its
/// callbacks. After that no callback and no handler is called any more, except that a running
/// script ends with an error. A popup stands in front of the window and gives the keyboard back to
/// it. When the last window closes, the game's window gets the keyboard.
///
/// When the page's process ends, the page is loaded again. When the helper ends, it is started
/// again once and brings the window back. In both cases the bridge starts again: callbacks that
/// waited for the old page are dropped, and messages wait until the new page asks for the bridge.
/// The same happens when the page is left for another one or reloaded.
///
/// The window has no buttons. A page that covers the screen must offer a way out, and a game should
/// close a window whose page fails to load.
class ZOVKPOPUP_API ZOVKPopupWebWindow final {
 public:
  /// Opens a window and begins to load its page. Returns null and logs one error line if the host
  /// is not set up, was shut down or has another main thread, or if the settings are invalid.
  static std::unique_ptr<ZOVKPopupWebWindow> open(const ZOVKPopupWebWindowSettings& settings);
  ~ZOVKPopupWebWindow();
  ZOVKPopupWebWindow(const ZOVKPopupWebWindow&) = delete;
  ZOVKPopupWebWindow& operator=(const ZOVKPopupWebWindow&) = delete;

  /// Returns false after `close`, after a failure, and after the host was shut down.
  bool isOpen() const;
  /// Returns the page's bridge (<zovkpopup/Bridge.h>). It exists as long as this object; in a
  /// closed window its messages reach nobody. Put the game's delegate into the settings instead of
  /// setting it here. Handlers are released when the window closes.
  ZOVKPopupWKWebViewJavascriptBridge& bridge() { return *bridge_; }
  /// Loads the page again.
  void reload();
  /// Runs a script in the page. `completion` may be empty. It gets the result or an error, unless
  /// the host is shut down first.
  void evaluate(const std::string& script, std::function<void(ScriptResult)> completion);
  /// Closes the window for good. May be called twice, and within any of its callbacks.
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
