#include "helper/page/PageLimits.h"

#include <algorithm>
#include <memory>

#include <sys/statvfs.h>

namespace zovk::helper {
namespace {

constexpr std::int64_t kLeastMemory = 64;
constexpr std::int64_t kMostMemory = 1 << 20;
constexpr double kSecondsBetweenLooks = 1;
constexpr double kStorageBytes = 64.0 * 1024 * 1024;

struct FreeSettings {
  void operator()(WebKitMemoryPressureSettings* settings) const {
    webkit_memory_pressure_settings_free(settings);
  }
};

/// Returns the part of the volume of `path` that the pages may fill.
double storageRatio(const std::string& path) {
  struct statvfs volume {};
  g_mkdir_with_parents(path.c_str(), 0700);
  if (statvfs(path.c_str(), &volume) != 0) return 0;
  const double bytes = static_cast<double>(volume.f_blocks) * static_cast<double>(volume.f_frsize);
  return bytes > 0 ? std::min(1.0, kStorageBytes / bytes) : 0;
}

/// The web engine lets programs choose the ratios of a store only if they make it themselves, and
/// makes the store of a session itself. So this changes the defaults.
void setStorageRatio(double ratio) {
  auto* const store =
      static_cast<GObjectClass*>(g_type_class_ref(WEBKIT_TYPE_WEBSITE_DATA_MANAGER));
  for (const char* name : {"origin-storage-ratio", "total-storage-ratio"}) {
    GParamSpec* const property = g_object_class_find_property(store, name);
    if (property != nullptr && G_IS_PARAM_SPEC_DOUBLE(property)) {
      G_PARAM_SPEC_DOUBLE(property)->default_value = ratio;
    }
  }
  g_type_class_unref(store);
}

}  // namespace

GObjectPtr<WebKitWebContext> newLimitedContext(std::int64_t megabytes) {
  const std::unique_ptr<WebKitMemoryPressureSettings, FreeSettings> settings(
      webkit_memory_pressure_settings_new());
  webkit_memory_pressure_settings_set_memory_limit(
      settings.get(), static_cast<guint>(std::clamp(megabytes, kLeastMemory, kMostMemory)));
  webkit_memory_pressure_settings_set_kill_threshold(settings.get(), 1);
  webkit_memory_pressure_settings_set_poll_interval(settings.get(), kSecondsBetweenLooks);
  return GObjectPtr<WebKitWebContext>::adopt(WEBKIT_WEB_CONTEXT(
      g_object_new(WEBKIT_TYPE_WEB_CONTEXT, "memory-pressure-settings", settings.get(), nullptr)));
}

GObjectPtr<WebKitNetworkSession> newLimitedSession(const std::string& directory) {
  const std::string data = directory + "/data";
  setStorageRatio(storageRatio(data));
  return GObjectPtr<WebKitNetworkSession>::adopt(
      webkit_network_session_new(data.c_str(), (directory + "/cache").c_str()));
}

}  // namespace zovk::helper
