#include "helper/window/HeldSensor.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

namespace zovk::helper {
namespace {

namespace fs = std::filesystem;

constexpr const char* kService = "net.hadess.SensorProxy";
constexpr const char* kPath = "/net/hadess/SensorProxy";

struct VariantUnref {
  void operator()(GVariant* value) const { g_variant_unref(value); }
};
using VariantPtr = std::unique_ptr<GVariant, VariantUnref>;

VariantPtr propertyOf(GDBusProxy* proxy, const char* name, const GVariantType* type) {
  VariantPtr value(g_dbus_proxy_get_cached_property(proxy, name));
  if (value && g_variant_is_of_type(value.get(), type) == FALSE) return nullptr;
  return value;
}

bool hasAccelerometer(GDBusProxy* proxy) {
  const VariantPtr value = propertyOf(proxy, "HasAccelerometer", G_VARIANT_TYPE_BOOLEAN);
  return value && g_variant_get_boolean(value.get()) == TRUE;
}

std::string edgeThatIsUp(GDBusProxy* proxy) {
  const VariantPtr value = propertyOf(proxy, "AccelerometerOrientation", G_VARIANT_TYPE_STRING);
  return value ? g_variant_get_string(value.get(), nullptr) : std::string();
}

/// The service's words, and what they mean on a machine whose screen is upright, or is not.
struct Meaning {
  const char* edge;
  std::string_view upright;
  std::string_view wide;
};
constexpr std::array kMeanings = {Meaning{"normal", word::kPortrait, word::kLeft},
                                  Meaning{"bottom-up", word::kUpsideDown, word::kRight},
                                  Meaning{"left-up", word::kRight, word::kPortrait},
                                  Meaning{"right-up", word::kLeft, word::kUpsideDown}};

std::string_view meaningOf(const std::string& edge, bool upright) {
  const auto* const found =
      std::find_if(kMeanings.begin(), kMeanings.end(),
                   [&edge](const Meaning& meaning) { return edge == meaning.edge; });
  if (found == kMeanings.end()) return word::kUnknown;
  return upright ? found->upright : found->wide;
}

/// Returns whether a screen of that name belongs to the machine.
bool isBuiltIn(const std::string& name) {
  constexpr std::array kKinds = {"-eDP-", "-LVDS-", "-DSI-"};
  return std::any_of(kKinds.begin(), kKinds.end(),
                     [&name](const char* kind) { return name.find(kind) != std::string::npos; });
}

}  // namespace

HeldSensor::HeldSensor(bool upright, Listener listener)
    : upright_(upright),
      listener_(std::move(listener)),
      cancel_(GObjectPtr<GCancellable>::adopt(g_cancellable_new())) {
  watch_ = g_bus_watch_name(G_BUS_TYPE_SYSTEM, kService, G_BUS_NAME_WATCHER_FLAGS_NONE, onAppeared,
                            onVanished, this, nullptr);
}

HeldSensor::~HeldSensor() {
  g_bus_unwatch_name(watch_);
  forgetService();
}

void HeldSensor::onAppeared(GDBusConnection* bus, const char*, const char*, gpointer self) {
  auto* sensor = static_cast<HeldSensor*>(self);
  g_dbus_proxy_new(bus, G_DBUS_PROXY_FLAGS_DO_NOT_AUTO_START, nullptr, kService, kPath, kService,
                   sensor->cancel_.get(), onProxy, sensor);
}

void HeldSensor::onVanished(GDBusConnection*, const char*, gpointer self) {
  auto* sensor = static_cast<HeldSensor*>(self);
  sensor->forgetService();
  sensor->tell(word::kUnknown);
}

void HeldSensor::onProxy(GObject*, GAsyncResult* result, gpointer self) {
  ErrorOut error;
  auto proxy = GObjectPtr<GDBusProxy>::adopt(g_dbus_proxy_new_finish(result, error));
  if (!proxy) return;  // cancelled, perhaps with what `self` is
  auto* sensor = static_cast<HeldSensor*>(self);
  sensor->proxy_ = std::move(proxy);
  g_signal_connect(sensor->proxy_.get(), "g-properties-changed", G_CALLBACK(onChanged), sensor);
  sensor->look();
}

void HeldSensor::onChanged(GDBusProxy*, GVariant*, char**, gpointer self) {
  static_cast<HeldSensor*>(self)->look();
}

void HeldSensor::look() {
  if (!hasAccelerometer(proxy_.get())) return tell(word::kUnknown);
  claim();
  tell(meaningOf(edgeThatIsUp(proxy_.get()), upright_));
}

// Until somebody claims it, the service does not read the sensor. The claim ends with this process.
void HeldSensor::claim() {
  if (std::exchange(claimed_, true)) return;
  g_dbus_proxy_call(proxy_.get(), "ClaimAccelerometer", nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
                    nullptr, nullptr, nullptr);
}

void HeldSensor::forgetService() {
  g_cancellable_cancel(cancel_.get());
  cancel_ = GObjectPtr<GCancellable>::adopt(g_cancellable_new());
  if (proxy_) g_signal_handlers_disconnect_by_data(proxy_.get(), this);
  proxy_ = {};
  claimed_ = false;
}

void HeldSensor::tell(std::string_view held) {
  if (std::exchange(told_, held) != held) listener_(told_);
}

bool hasUprightScreen(const std::string& folder) {
  std::error_code none;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, none)) {
    if (!isBuiltIn(entry.path().filename().string())) continue;
    // The first is the one that the screen was made for.
    std::ifstream modes(entry.path() / "modes");
    int width = 0;
    int height = 0;
    char times = 0;
    if (modes >> width >> times >> height) return height > width;
  }
  return false;
}

}  // namespace zovk::helper
