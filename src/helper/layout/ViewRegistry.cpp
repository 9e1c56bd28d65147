#include "helper/layout/ViewRegistry.h"

#include <cmath>
#include <utility>
#include <vector>

#include "protocol/MessageNames.h"

namespace zovk::helper {

ViewRegistry::ViewRegistry(std::function<void(Id, GtkWidget*)> dropped)
    : dropped_(std::move(dropped)) {}

void ViewRegistry::add(Id id, GtkWidget* widget, Id layout) {
  entries_.try_emplace(id, Entry{GObjectPtr<GtkWidget>::sink(widget), layout, false, std::nullopt});
}

GtkWidget* ViewRegistry::find(Id id) const {
  const auto found = entries_.find(id);
  return found == entries_.end() ? nullptr : found->second.widget.get();
}

void ViewRegistry::drop(Id id) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  const Entry entry = std::move(found->second);
  entries_.erase(found);
  dropped_(id, entry.widget.get());
}

void ViewRegistry::dropIf(const std::function<bool(const Entry&)>& unwanted) {
  std::vector<Id> ids;
  for (const auto& [id, entry] : entries_) {
    if (unwanted(entry)) ids.push_back(id);
  }
  for (const Id id : ids) drop(id);
}

void ViewRegistry::dropAllIn(GtkWidget* ancestor) {
  dropIf([ancestor](const Entry& entry) {
    GtkWidget* widget = entry.widget.get();
    return widget == ancestor || gtk_widget_is_ancestor(widget, ancestor);
  });
}

void ViewRegistry::dropLayout(Id layout) {
  dropIf([layout](const Entry& entry) { return entry.layout == layout; });
}

void ViewRegistry::release(Id id) {
  const auto found = entries_.find(id);
  if (found == entries_.end()) return;
  found->second.released = true;
  dropReleased();
}

void ViewRegistry::dropReleased() {
  dropIf([](const Entry& entry) {
    return entry.released && gtk_widget_get_root(entry.widget.get()) == nullptr;
  });
}

ViewRegistry::Place ViewRegistry::placeOf(GtkWidget* widget, GtkWidget* window) {
  graphene_rect_t bounds;
  if (!gtk_widget_get_mapped(widget) || !gtk_widget_compute_bounds(widget, window, &bounds)) {
    return {};
  }
  const auto whole = [](float length) { return static_cast<int>(std::lround(length)); };
  return {whole(bounds.origin.x), whole(bounds.origin.y), whole(bounds.size.width),
          whole(bounds.size.height), true};
}

void ViewRegistry::reportFrames(Id windowId, GtkWidget* window, const EventSink& events) {
  for (auto& [id, entry] : entries_) {
    if (!gtk_widget_is_ancestor(entry.widget.get(), window)) continue;
    const Place place = placeOf(entry.widget.get(), window);
    if (entry.reported == place) continue;
    entry.reported = place;
    events({{member::kType, event::kViewFrame},
            {member::kView, id},
            {member::kWindow, windowId},
            {member::kFrame, {place.x, place.y, place.width, place.height}},
            {member::kVisible, place.visible}});
  }
}

}  // namespace zovk::helper
