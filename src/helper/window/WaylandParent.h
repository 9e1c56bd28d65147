#pragma once

#include <cstdint>
#include <string>

#include <gtk/gtk.h>

struct wl_event_queue;
struct wl_registry;
struct zxdg_imported_v2;
struct zxdg_importer_v2;

namespace zovk::helper {

/// The game's window on Wayland, by the handle that the game got from an exporter. Has no effect on
/// other display systems, and if the compositor accepts no handles.
class WaylandParent {
 public:
  /// `handle` is empty if there is none.
  explicit WaylandParent(std::string handle);
  ~WaylandParent();
  WaylandParent(const WaylandParent&) = delete;
  WaylandParent& operator=(const WaylandParent&) = delete;

  bool isKnown() const { return !handle_.empty(); }
  /// Puts a realised window in front of the game's. Call it before the window is shown and placed.
  void prepare(GtkWindow* window);
  /// Does the same for compositors that know only the newer version of the protocol. Call it once
  /// the window is shown.
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
