#include "storage/StorageLog.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {

std::string ZOVKPopupFileManager::valueForKey(const std::string& key) const {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::valueForKey");
  debug("Get value for key:%@", key);
  if (key.empty()) return "";
  std::string value = platform_->settings.value(key).value_or("");
  if (value.empty()) {
    debug("No value for key:%@", key);
  } else {
    debug("Got value:%@ for key:%@", value, key);
  }
  return value;
}

void ZOVKPopupFileManager::saveValue(const std::optional<std::string>& value,
                                     const std::string& key) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::saveValue");
  debug("Save value:%@ for key:%@", value, key);
  if (key.empty()) {
    logError("key illegal");
    return;
  }
  if (value && !value->empty()) {
    platform_->settings.set(key, *value);
    platform_->settings.synchronize();
    debug("Save value:%@ for key:%@ done", value, key);
  } else {
    platform_->settings.remove(key);
    platform_->settings.synchronize();
    debug("Remove value for key:%@ done", key);
  }
}

std::optional<std::string> ZOVKPopupFileManager::getUUID() {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::getUUID");
  constexpr const char* kInstallKey = "uuid";
  std::optional<std::string> identifier = valueForKey(kInstallKey);
  if (identifier->empty()) {
    identifier = platform_->device.identifierForVendor();
    // One that cannot be read now stays what it is.
    if (platform_->settings.isReadable()) saveValue(identifier, kInstallKey);
  }
  debug("UUID:%@", identifier);
  return identifier;
}

}  // namespace zovk
