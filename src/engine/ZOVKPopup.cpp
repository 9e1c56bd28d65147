#include "zovkpopup/ZOVKPopup.h"

#include "engine/ZOVKPopupManager.h"
#include "support/Version.h"

namespace zovk {
namespace {

// Returns the engine, kept for the length of a call, in which a callback may shut the popups down.
// Returns null, and logs one error line, if there is no platform to run on.
std::shared_ptr<ZOVKPopupManager> engine() {
  auto* const manager = ZOVKPopupManager::sharedInstance();
  if (manager != nullptr) return manager->shared_from_this();
  logError("ZOVKPopup is not set up, or was shut down");
  return nullptr;
}

void answerWithoutEngine(const ZOVKPopupComplete& complete) {
  if (complete) complete(ZOVKPopupResultError, "ZOVKPopup is not set up, or was shut down");
}

}  // namespace

const char* const ZOVKPopupCurrentVersionString = kPopupVersion;

void ZOVKPopup::showPolicy(const ZOVKPopupComplete& complete) {
  const auto manager = engine();
  if (manager == nullptr) return answerWithoutEngine(complete);
  manager->showPolicy(complete);
}

void ZOVKPopup::startPopup(const std::string& baseUrl, const std::string& gameID,
                           const std::string& gameKey) {
  if (const auto manager = engine()) manager->startPopup(baseUrl, gameID, gameKey);
}

bool ZOVKPopup::havePopup(std::uint64_t sceneType) {
  const auto manager = engine();
  return manager != nullptr && manager->havePopup(sceneType);
}

void ZOVKPopup::showPopup(const std::string& scene, std::uint64_t sceneType,
                          const ZOVKPopupComplete& complete) {
  const auto manager = engine();
  if (manager == nullptr) return answerWithoutEngine(complete);
  manager->showPopup(scene, sceneType, complete);
}

void ZOVKPopup::setChannelID(std::int32_t channelID, const std::string& openID,
                             const std::string& token, const std::string& jwtToken) {
  if (const auto manager = engine()) manager->setChannelID(channelID, openID, token, jwtToken);
}

}  // namespace zovk
