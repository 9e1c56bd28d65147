#include "host/LoggerSetUp.h"

#include <utility>

#include "logging/ZPLogger.h"

namespace zovk {
namespace {

std::optional<std::string> settingBundlePath(const Platform& platform) {
  return platform.bundles.mainBundle()->pathForResource("ZOVKAppSetting", "bundle");
}

std::optional<std::string> settingText(const Platform& platform) {
  const auto path = settingBundlePath(platform);
  const auto bundle = path ? platform.bundles.bundleWithPath(*path) : nullptr;
  const auto file = bundle ? bundle->pathForResource("ZOVKConfig", "ini") : std::nullopt;
  return file ? platform.files.read(*file) : std::nullopt;
}

}  // namespace

void setUpLogger(std::shared_ptr<Platform> platform) {
  LogEnvironment environment;
  environment.writeLine = [platform](std::string_view line) { platform->log.writeLine(line); };
  environment.hasSettingBundle = [platform] { return settingBundlePath(*platform).has_value(); };
  environment.readSettingFile = [platform] { return settingText(*platform); };
  environment.infoFlag = [platform](std::string_view key) {
    return boolValue(platform->bundles.mainBundle()->infoDictionary(), key);
  };
  ZPLogger::setEnvironment(std::move(environment));
}

}  // namespace zovk
