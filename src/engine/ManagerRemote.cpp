#include "engine/ZOVKPopupManager.h"
#include "network/ZOVKPopupNetwork.h"
#include "record/PlayerRequest.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {

void ZOVKPopupManager::requestRemoteConfig() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::requestRemoteConfig");
  debug("Request remote config");
  const double now = platform_->clock.systemUptime();
  times_.with([&](ServiceTimes& times) { times.startTime = now; });
  const StartedGame game = game_.get();
  ZOVKPopupUrlParams params = serviceRequest(game.gameID, game.gameKey);
  params.urlStr = game.popUrl;
  params.actionPath = "/popup/get_info";
  const auto network = std::make_shared<ZOVKPopupNetwork>(platform_->urlSession);
  network->startRequest(
      ZOVKPopupNetwork::kGet, params,
      [self = weak_from_this()](bool success, const std::optional<std::string>& data) {
        constexpr DebugLog answered = managerLog("ZOVKPopupManager::requestRemoteConfig");
        if (!success) return logError("Request remote config failed!");
        const auto manager = self.lock();
        if (manager == nullptr) return;
        answered("Request remote config success");
        const double time = manager->platform_->clock.systemUptime() - manager->startTime();
        manager->times_.with([&](ServiceTimes& times) { times.requestTime = time; });
        answered("Request time:%f", time);
        manager->handleRemoteConfigResponse(data);
      });
}

void ZOVKPopupManager::handleRemoteConfigResponse(const std::optional<std::string>& data) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::handleRemoteConfigResponse");
  debug("Handle remote config response:%d", data ? data->size() : 0);
  if (!data || data->empty()) return;
  PopupList popups;
  if (!parseConfigFile(*data, kConfigRemote, &popups)) {
    if (!stopping_) logError("No remote config or parse config file error");
    return;
  }
  debug("Parse config file success");
  debug("Save remote config file");
  if (auto* const files = ZOVKPopupFileManager::sharedInstance()) {
    files->saveInternalFile(kRemoteDocumentFile, *data, false);
  }
  if (popups.empty()) return;  // an empty answer does not take the earlier popups away
  setRemotePopupArr(popups);
  mergeConfig();
  downloadRemotePopupFile(popups);
}

void ZOVKPopupManager::downloadRemotePopupFile(const PopupList& popups) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::downloadRemotePopupFile");
  debug("Start to download remote Popup file");
  if (popups.empty()) return logError("Param illegal");
  for (const PopupPointer& popup : popups) {
    if (stopping_) return;
    if (!popup->isPageFile()) continue;
    const auto network = std::make_shared<ZOVKPopupNetwork>(platform_->urlSession);
    network->startDownload(popup->uri, [self = weak_from_this(), popup](
                                           bool success, const std::optional<std::string>& path) {
      if (const auto manager = self.lock()) manager->savePage(*popup, success, path);
    });
  }
}

void ZOVKPopupManager::savePage(const ZOVKPopupModel& popup, bool success,
                                const std::optional<std::string>& path) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::downloadRemotePopupFile");
  if (!success) return logError("Download file failed, uri:%@", popup.uri);
  debug("Download file success, uri:%@", popup.uri);
  const auto page = path ? platform_->files.read(*path) : std::nullopt;
  if (!page || page->empty()) return;
  const std::string name = popup.getPopupFileName();
  debug("Save file %@", name);
  if (auto* const files = ZOVKPopupFileManager::sharedInstance()) {
    files->saveInternalFile(name, *page, false);
  }
}

}  // namespace zovk
