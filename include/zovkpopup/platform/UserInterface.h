#pragma once

#include <functional>
#include <memory>
#include <string>

#include <zovkpopup/platform/Geometry.h>
#include <zovkpopup/platform/View.h>
#include <zovkpopup/platform/WebView.h>
#include <zovkpopup/platform/Window.h>

namespace zovk {

/// Makes windows, layouts and web views, and opens addresses outside the game. Main thread only;
/// events and results come from the host's pump. Callers own the objects made. No call fails at
/// once. If the interface cannot be started, the root controller of every window hears of it. An
/// interface that is lost for a moment restores what was on screen.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// Announces that something may be shown soon. By default it does nothing.
  virtual void prepare() {}
  /// Returns the bounds of the main screen; empty if there is none or it is not known yet.
  virtual Rect mainScreenBounds() const = 0;
  virtual std::shared_ptr<Window> makeWindow(const Rect& frame) = 0;
  /// Loads the layout `name` from a bundle's directory. `owner` receives the events of its buttons
  /// while it lives.
  virtual std::shared_ptr<Layout> loadLayout(const std::string& bundlePath, const std::string& name,
                                             std::weak_ptr<LayoutOwner> owner) = 0;
  virtual std::shared_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) = 0;

  /// Returns whether a program opens addresses of this kind, as last reported.
  virtual bool canOpenUrl(const std::string& url) const = 0;
  /// Passes the address to the system. `completion` gets whether it was opened; it may be empty.
  virtual void openUrl(const std::string& url, std::function<void(bool opened)> completion) = 0;
};

}  // namespace zovk
