#pragma once

#include <functional>
#include <map>
#include <optional>

#include <gtk/gtk.h>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// The views that the game knows by number. It holds a reference to each of them, so that a view
/// outlives its place in a window; when one is dropped, `dropped` hears of it first.
class ViewRegistry {
 public:
  explicit ViewRegistry(std::function<void(Id, GtkWidget*)> dropped);

  /// A number that is taken stays with its view. `layout` is the layout that brought it, or 0.
  void add(Id id, GtkWidget* widget, Id layout = 0);
  /// Null when there is no such view.
  GtkWidget* find(Id id) const;
  void drop(Id id);
  void dropAllIn(GtkWidget* ancestor);
  void dropLayout(Id layout);
  /// The game holds no handle any more: the view goes as soon as it stands in no window.
  void release(Id id);
  void dropReleased();
  /// Sends the places that have changed of the views in `window`.
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
