#pragma once

#include <functional>
#include <memory>
#include <string>

#include <zovkpopup/platform/Geometry.h>
#include <zovkpopup/platform/View.h>
#include <zovkpopup/platform/WebView.h>
#include <zovkpopup/platform/Window.h>

namespace zovk {

/// Makes windows, layouts and web views, and opens addresses outside the game.
/// Main thread only, with events and results coming from the host's pump. Callers own what is
/// made. Nothing here fails at once: an interface that cannot be brought up tells the root
/// controller of every window, and one that is lost for a moment brings back what was on screen.
class UserInterface {
 public:
  virtual ~UserInterface() = default;

  /// Tells that something may be shown soon. By default it has no effect.
  virtual void prepare() {}
  /// Empty when there is no main screen or it is not known yet.
  virtual Rect mainScreenBounds() const = 0;
  virtual std::shared_ptr<Window> makeWindow(const Rect& frame) = 0;
  /// Loads the layout `name` from a bundle's directory. `owner` hears of its buttons while it
  /// lives.
  virtual std::shared_ptr<Layout> loadLayout(const std::string& bundlePath, const std::string& name,
                                             std::weak_ptr<LayoutOwner> owner) = 0;
  virtual std::shared_ptr<WebView> makeWebView(const WebViewConfiguration& configuration) = 0;

  /// Whether some program opens addresses of this kind, as last heard.
  virtual bool canOpenUrl(const std::string& url) const = 0;
  /// Hands the address to the system. `completion` hears whether it was opened; it may be empty.
  virtual void openUrl(const std::string& url, std::function<void(bool opened)> completion) = 0;
};

}  // namespace zovk
