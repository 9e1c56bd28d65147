#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/linux/helper/HelperInspector.h"
#include "platform/linux/helper/HelperJournal.h"
#include "zovkpopup/platform/Geometry.h"
#include "zovkpopup/platform/View.h"

namespace zovk {

class HelperWebView;
class HelperWindow;

/// The objects of the game's handles, by number, and the helper's last reports about the screen.
/// The handles add and remove themselves.
struct HelperObjects {
  struct Outlet {
    std::string name;
    HelperId window = 0;  ///< The window that the view is in; 0 if not reported yet.
    HelperInspector::ViewFrame frame;
  };
  std::map<HelperId, std::weak_ptr<HelperWindow>> windows;
  std::map<HelperId, std::weak_ptr<HelperWebView>> webViews;
  std::map<HelperId, std::weak_ptr<LayoutOwner>> layoutOwners;
  std::map<HelperId, Outlet> outlets;
  std::vector<HelperId> shownWindows;  ///< The one shown last is at the end.
  HelperId keyWindow = 0;              ///< 0 while the game's own window is the key window.
  HelperId activeWindow = 0;  ///< The window with the keyboard, as far as the helper knows.
  Rect screen;
  std::set<std::string, std::less<>> schemes;

  bool isEmpty() const {
    return windows.empty() && webViews.empty() && layoutOwners.empty() && outlets.empty() &&
           shownWindows.empty();
  }
  HelperId frontWindow() const { return shownWindows.empty() ? 0 : shownWindows.back(); }
};

/// Returns the object of that number, and keeps it while it is used; null if it is gone.
template <class Object>
std::shared_ptr<Object> findObject(const std::map<HelperId, std::weak_ptr<Object>>& objects,
                                   HelperId id) {
  const auto found = objects.find(id);
  return found == objects.end() ? nullptr : found->second.lock();
}

}  // namespace zovk
