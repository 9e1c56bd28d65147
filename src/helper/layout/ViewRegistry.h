#pragma once

#include <functional>
#include <map>
#include <optional>

#include <gtk/gtk.h>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// The views that the game knows by number. It holds a reference to each of them, so that a view
/// outlives its place in a window. Before it drops one, it calls `dropped`.
class ViewRegistry {
 public:
  explicit ViewRegistry(std::function<void(Id, GtkWidget*)> dropped);

  /// Adds a view. A number in use stays with its view. `layout` is the layout of the view, or 0.
  void add(Id id, GtkWidget* widget, Id layout = 0);
  /// Returns a view; null if there is none.
  GtkWidget* find(Id id) const;
  void drop(Id id);
  void dropAllIn(GtkWidget* ancestor);
  void dropLayout(Id layout);
  /// Reports that the game has no handle any more: the view is dropped as soon as it is in no
  /// window.
  void release(Id id);
  void dropReleased();
  /// Sends the changed places of the views in `window`.
  void reportFrames(Id windowId, GtkWidget* window, const EventSink& events);

 private:
  struct Place {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool visible = false;
    friend bool operator==(const Place&, const Place&) = default;
  };
  struct Entry {
    GObjectPtr<GtkWidget> widget;
    Id layout = 0;
    bool released = false;
    std::optional<Place> reported;
  };
  static Place placeOf(GtkWidget* widget, GtkWidget* window);
  void dropIf(const std::function<bool(const Entry&)>& unwanted);

  std::function<void(Id, GtkWidget*)> dropped_;
  std::map<Id, Entry> entries_;
};

}  // namespace zovk::helper
