#include "engine/LoggerSetUp.h"

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

void setUpLogger(const std::weak_ptr<Platform>& platform, std::shared_ptr<PlatformLog> log) {
  LogEnvironment environment;
  environment.writeLine = [log = std::move(log)](std::string_view line) { log->writeLine(line); };
  environment.hasSettingBundle = [platform] {
    const auto now = platform.lock();
    return now != nullptr && settingBundle(*now) != nullptr;
  };
  environment.readSettingFile = [platform]() -> std::optional<std::string> {
    const auto now = platform.lock();
    return now != nullptr ? settingText(*now) : std::nullopt;
  };
  environment.infoFlag = [platform](std::string_view key) {
    const auto now = platform.lock();
    return now != nullptr && boolValue(now->bundles.mainBundle()->infoDictionary(), key);
  };
  ZPLogger::setEnvironment(std::move(environment));
}

}  // namespace zovk
