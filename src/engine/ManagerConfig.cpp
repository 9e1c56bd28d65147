#include <stdexcept>

#include "engine/DocumentParser.h"
#include "engine/Merge.h"
#include "engine/OnceRecord.h"
#include "engine/ZOVKPopupManager.h"
#include "network/JsonNumbers.h"
#include "storage/ZOVKPopupFileManager.h"
#include "support/JsonRead.h"
#include "support/Utf8.h"

namespace zovk {
namespace {

constexpr const char* kRemoteFile = "ZOVKPopupRemote.config";
constexpr const char* kLocalFile = "ZOVKPopupLocal.config";

// Reads a member of something that should be an object.
const boost::json::value* member(const boost::json::value& document, std::string_view key) {
  if (!document.is_object()) throw std::invalid_argument("the document is no object");
  return document.get_object().if_contains(key);
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
  boost::json::error_code error;
  const boost::json::value document = readJson(withoutByteOrderMark(fileData), error);
  if (error) {
    logError("Parse config file error:%@", error.message());
    return false;
  }
  debug("Config file:%@", document);
  try {
    return readDocument(document, configType, popUps);
  } catch (const std::invalid_argument& wrong) {
    logError("Parse config file exception:%@", wrong.what());
    return false;
  }
}

bool ZOVKPopupManager::readDocument(const boost::json::value& document, std::uint64_t configType,
                                    PopupList* popUps) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::parseConfigFile");
  if (configType == kConfigRemote && !readRemoteHead(document)) return false;
  if (popUps != nullptr) {
    const boost::json::value* const entries = member(document, "popups");
    if (entries == nullptr || !entries->is_array() || entries->get_array().empty()) {
      logError("No Popups or Popups type error");
      return false;
    }
    *popUps = popupsFromEntries(entries->get_array(), configType);
  }
  debug("Parse config file done");
  return true;
}

bool ZOVKPopupManager::readRemoteHead(const boost::json::value& document) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::parseConfigFile");
  const auto* codeValue = member(document, "code");
  const std::int32_t code = codeValue != nullptr ? intValue(*codeValue) : 0;
  const auto* message = member(document, "message");
  debug("code:%d, message:%@", code, [&] {
    if (message == nullptr) return std::string("(null)");
    return message->is_string() ? std::string(message->get_string()) : logText(*message);
  });
  if (code != 0) return false;
  const auto* time = member(document, "server_time");
  const double serverTime = time != nullptr ? doubleValue(*time) : 0;
  const LockGuard lock(mutex_);
  state_.serverTime = serverTime;
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
  if (files == nullptr || !files->readInternalFile(kRemoteFile, nullptr, &data)) {
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
  PopupList merged =
      mergePopups(list(&State::remotePopupArr), list(&State::localPopupArr),
                  [&](const ZOVKPopupModel& remote, const ZOVKPopupModel& local) {
                    debug("Same scene:%@, use the one who's publishTime latest", remote.scene);
                    debug("Remote config publishTime:%d, Local config publishTime:%d",
                          remote.publish_time, local.publish_time);
                  });
  // Nothing merged leaves the earlier list: a failed reload never takes the popups away.
  if (!merged.empty()) setMergePopupArr(std::move(merged));
  debug("Merge config done, Popup count:%d", list(&State::mergePopupArr)->size());
}

void ZOVKPopupManager::deleteExpiredPopup() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::deleteExpiredPopup");
  debug("Delete expired Popup");
  const PopupListPointer remote = list(&State::remotePopupArr);
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
  files->saveInternalFile(kOnceRecordFile,
                          prunedOnceRecord(record, popups, *list(&State::localPopupArr)), false);
}

double ZOVKPopupManager::getCurrentTime() const {
  // The device's own clock decides, also when the service has told its time: a player with a wrong
  // clock sees popups by that clock.
  return platform_->clock.secondsSince1970();
}

}  // namespace zovk
