#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/WebHostInspector.h"
#include "platform/linux/WebHostJournal.h"
#include "zovkpopup/platform/Geometry.h"
#include "zovkpopup/platform/View.h"

namespace zovk {

class WebHostWebView;
class WebHostWindow;

/// What the game holds handles to, by number, and what the helper last told about the screen. The
/// handles enter and leave by themselves.
struct WebHostObjects {
  struct Outlet {
    std::string name;
    WebHostId window = 0;  ///< Where it stands; 0 while that was not heard.
    WebHostInspector::ViewFrame frame;
  };
  std::map<WebHostId, std::weak_ptr<WebHostWindow>> windows;
  std::map<WebHostId, std::weak_ptr<WebHostWebView>> webViews;
  std::map<WebHostId, std::weak_ptr<LayoutOwner>> layoutOwners;
  std::map<WebHostId, Outlet> outlets;
  std::vector<WebHostId> shownWindows;  ///< The one shown last at the end.
  WebHostId keyWindow = 0;              ///< 0 while the game's own window is the key window.
  WebHostId activeWindow = 0;           ///< Has the keyboard, as far as the helper knows.
  Rect screen;
  std::set<std::string, std::less<>> schemes;

  bool isEmpty() const {
    return windows.empty() && webViews.empty() && layoutOwners.empty() && outlets.empty() &&
           shownWindows.empty();
  }
  WebHostId frontWindow() const { return shownWindows.empty() ? 0 : shownWindows.back(); }
};

/// The object of that number for as long as it is used; null when it is gone.
template <class Object>
std::shared_ptr<Object> findObject(const std::map<WebHostId, std::weak_ptr<Object>>& objects,
                                   WebHostId id) {
  const auto found = objects.find(id);
  return found == objects.end() ? nullptr : found->second.lock();
}

}  // namespace zovk
