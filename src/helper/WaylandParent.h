#pragma once

#include <cstdint>
#include <string>

#include <gtk/gtk.h>

struct wl_event_queue;
struct wl_registry;
struct zxdg_imported_v2;
struct zxdg_importer_v2;

namespace zovk::helper {

/// The game's window on Wayland, by the handle that an exporter gave to the game. Has no effect on
/// other display systems, and where the compositor takes no handles.
class WaylandParent {
 public:
  /// `handle` is empty when there is none.
  explicit WaylandParent(std::string handle);
  ~WaylandParent();
  WaylandParent(const WaylandParent&) = delete;
  WaylandParent& operator=(const WaylandParent&) = delete;

  bool isKnown() const { return !handle_.empty(); }
  /// Lets a realised window stand before the game's. Before it is shown, when it is placed.
  void prepare(GtkWindow* window);
  /// The same, for compositors that know the newer version of the protocol only: once it is shown.
  void settle(GtkWindow* window) const;

 private:
  friend struct WaylandGlobals;
  void bindImporter();

  std::string handle_;
  wl_event_queue* queue_ = nullptr;
  zxdg_importer_v2* importer_ = nullptr;
  zxdg_imported_v2* imported_ = nullptr;
};

}  // namespace zovk::helper
