#include <stdexcept>

#include "engine/DocumentReader.h"
#include "engine/Merge.h"
#include "engine/OnceRecord.h"
#include "engine/ZOVKPopupManager.h"
#include "storage/ZOVKPopupFileManager.h"
#include "support/Utf8.h"
#include "text/JsonNumbers.h"
#include "text/JsonRead.h"

namespace zovk {
namespace {

constexpr const char* kLocalFile = "ZOVKPopupLocal.config";

// Parses the whole document, for log lines about more than the reader keeps.
boost::json::value wholeDocument(std::string_view text) {
  boost::json::error_code failed;
  return readJson(text, failed);
}

std::string messageText(const ConfigDocument& document, std::string_view text) {
  if (!document.message) return "(null)";
  if (document.message->is_string()) return std::string(document.message->get_string());
  if (!document.message->is_structured()) return logText(*document.message);
  return logText(wholeDocument(text).at("message"));
}

void expectObject(const ConfigDocument& document) {
  if (!document.isObject) throw std::invalid_argument("the document is no object");
}

}  // namespace

bool ZOVKPopupManager::parseConfigFile(std::string_view fileData, std::uint64_t configType,
                                       PopupList* popUps) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::parseConfigFile");
  debug("Parse config file, configType:%d, file data length:%d", configType, fileData.size());
  if (fileData.empty()) {
    logError("fileData NULL");
    return false;
  }
  if (fileData.size() > kMostDocumentBytes) {
    logError("Parse config file error:%@", "more than 8 MiB");
    return false;
  }
  const std::string_view text = withoutByteOrderMark(fileData);
  std::string error;
  const auto document = readConfigDocument(text, configType, stopping_, error);
  if (!document) {
    if (!stopping_) logError("Parse config file error:%@", error);
    return false;
  }
  debug("Config file:%@", [&] { return logText(wholeDocument(text)); });
  try {
    return takeDocument(*document, text, configType, popUps);
  } catch (const std::invalid_argument& wrong) {
    logError("Parse config file exception:%@", wrong.what());
    return false;
  }
}

bool ZOVKPopupManager::takeDocument(const ConfigDocument& document, std::string_view text,
                                    std::uint64_t configType, PopupList* popUps) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::parseConfigFile");
  if (configType == kConfigRemote && !takeRemoteHead(document, text)) return false;
  if (popUps != nullptr) {
    expectObject(document);
    if (document.entryCount == 0) {
      logError("No Popups or Popups type error");
      return false;
    }
    if (document.entryCount > kMostDocumentEntries) {
      throw std::invalid_argument("more than 10000 popups");
    }
    if (document.wrongEntry) throw std::invalid_argument(*document.wrongEntry);
    *popUps = document.popups;
  }
  debug("Parse config file done");
  return true;
}

bool ZOVKPopupManager::takeRemoteHead(const ConfigDocument& document, std::string_view text) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::parseConfigFile");
  expectObject(document);
  const std::int32_t code = document.code ? intValue(*document.code) : 0;
  debug("code:%d, message:%@", code, [&] { return messageText(document, text); });
  if (code != 0) return false;
  const double serverTime = document.serverTime ? doubleValue(*document.serverTime) : 0;
  times_.with([&](ServiceTimes& times) { times.serverTime = serverTime; });
  return true;
}

void ZOVKPopupManager::loadConfigFile() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::loadConfigFile");
  debug("Start load config file");
  loadRemoteConfig();
  loadLocalConfig();
  mergeConfig();
}

void ZOVKPopupManager::loadRemoteConfig() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::loadRemoteConfig");
  debug("Load remote config");
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  std::string data;
  if (files == nullptr || !files->readInternalFile(kRemoteDocumentFile, nullptr, &data)) {
    return logError("Load remote config error, file may not exist");
  }
  PopupList popups;
  if (!parseConfigFile(data, kConfigRemote, &popups)) return logError("Parse remote config failed");
  setRemotePopupArr(std::move(popups));
}

void ZOVKPopupManager::loadLocalConfig() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::loadLocalConfig");
  debug("Load local config");
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  std::string data;
  if (files == nullptr || !files->readResourceFile(kLocalFile, nullptr, &data)) {
    return logError("Load local config error, file may not exist");
  }
  PopupList popups;
  if (!parseConfigFile(data, kConfigLocal, &popups)) return logError("Parse local config failed");
  setLocalPopupArr(std::move(popups));
}

void ZOVKPopupManager::mergeConfig() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::mergeConfig");
  debug("Start merge config");
  const PopupLists lists = lists_.get();
  PopupList merged = mergePopups(
      lists.remote, lists.local, [&](const ZOVKPopupModel& remote, const ZOVKPopupModel& local) {
        debug("Same scene:%@, use the one who's publishTime latest", remote.scene);
        debug("Remote config publishTime:%d, Local config publishTime:%d", remote.publish_time,
              local.publish_time);
      });
  // Nothing merged leaves the earlier list: a failed reload never takes the popups away.
  if (!merged.empty()) setMergePopupArr(std::move(merged));
  debug("Merge config done, Popup count:%d", mergedPopups()->size());
}

void ZOVKPopupManager::deleteExpiredPopup() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::deleteExpiredPopup");
  debug("Delete expired Popup");
  const PopupListPointer remote = lists_.get().remote;
  deleteExpirePopupFile(*remote);
  deleteExpirePopupOnceRecord(*remote);
}

void ZOVKPopupManager::deleteExpirePopupFile(const PopupList& popups) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::deleteExpirePopupFile");
  debug("Delete expire Popup file");
  if (auto* const files = ZOVKPopupFileManager::sharedInstance()) {
    files->deleteInternalFileWithout(cacheKeepList(popups));
  }
}

void ZOVKPopupManager::deleteExpirePopupOnceRecord(const PopupList& popups) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::deleteExpirePopupOnceRecord");
  debug("Delete expire Popup once record");
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  std::string record;
  if (files == nullptr || !files->readInternalFile(kOnceRecordFile, nullptr, &record)) return;
  if (!isUtf8(record)) return;
  files->saveInternalFile(kOnceRecordFile, prunedOnceRecord(record, popups, *lists_.get().local),
                          false);
}

double ZOVKPopupManager::getCurrentTime() const {
  // The device's clock decides, even if the service has sent its time: a player with a wrong clock
  // sees popups by that clock.
  return platform_->clock.secondsSince1970();
}

}  // namespace zovk
