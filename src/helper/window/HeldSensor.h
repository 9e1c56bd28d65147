#pragma once

#include <functional>
#include <string>

#include "helper/GObjectPtr.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {

/// Reports how the player holds the machine, from the system's sensor service, if there is one.
/// Main thread.
class HeldSensor {
 public:
  /// Receives each change: "portrait", "upsideDown", "left", "right" or "unknown", the initial
  /// value.
  using Listener = std::function<void(const std::string& held)>;

  /// `upright` says whether the machine's own screen is higher than wide in the machine's normal
  /// position.
  HeldSensor(bool upright, Listener listener);
  ~HeldSensor();
  HeldSensor(const HeldSensor&) = delete;
  HeldSensor& operator=(const HeldSensor&) = delete;

 private:
  static void onAppeared(GDBusConnection* bus, const char* name, const char* owner, gpointer self);
  static void onVanished(GDBusConnection* bus, const char* name, gpointer self);
  static void onProxy(GObject* source, GAsyncResult* result, gpointer self);
  static void onChanged(GDBusProxy* proxy, GVariant* changed, char** gone, gpointer self);
  void look();
  void claim();
  void forgetService();
  void tell(std::string_view held);

  const bool upright_;
  const Listener listener_;
  std::string told_{word::kUnknown};
  guint watch_ = 0;
  GObjectPtr<GCancellable> cancel_;
  GObjectPtr<GDBusProxy> proxy_;
  bool claimed_ = false;
};

/// Returns whether the machine's own screen is higher than wide; false if there is none. `folder`
/// is the system's folder of screens.
bool hasUprightScreen(const std::string& folder = "/sys/class/drm");

}  // namespace zovk::helper
