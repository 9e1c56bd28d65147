#include "host/LoggerSetUp.h"

#include <utility>

#include "logging/ZPLogger.h"

namespace zovk {
namespace {

std::shared_ptr<const Bundle> settingBundle(const Platform& platform) {
  const auto path = platform.bundles.mainBundle()->pathForResource("ZOVKAppSetting", "bundle");
  return path ? platform.bundles.bundleWithPath(*path) : nullptr;
}

std::optional<std::string> settingText(const Platform& platform) {
  const auto bundle = settingBundle(platform);
  const auto file = bundle ? bundle->pathForResource("ZOVKConfig", "ini") : std::nullopt;
  return file ? platform.files.read(*file) : std::nullopt;
}

}  // namespace

void setUpLogger(std::shared_ptr<Platform> platform) {
  LogEnvironment environment;
  environment.writeLine = [platform](std::string_view line) { platform->log.writeLine(line); };
  environment.hasSettingBundle = [platform] { return settingBundle(*platform) != nullptr; };
  environment.readSettingFile = [platform] { return settingText(*platform); };
  environment.infoFlag = [platform](std::string_view key) {
    return boolValue(platform->bundles.mainBundle()->infoDictionary(), key);
  };
  ZPLogger::setEnvironment(std::move(environment));
}

}  // namespace zovk
