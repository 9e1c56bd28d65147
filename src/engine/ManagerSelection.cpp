#include "engine/Selection.h"
#include "engine/ZOVKPopupManager.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {
namespace {

JudgementSink keepPassed(PopupList& passed) {
  return [&passed](const PopupPointer& popup, const Judgement& judgement) {
    if (judgement.verdict == Verdict::kPassed) passed.push_back(popup);
  };
}

}  // namespace

bool ZOVKPopupManager::havePopup(std::uint64_t sceneType) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::havePopup");
  debug("sceneType:%d", sceneType);
  const bool found = !getValidPopupForSceneType(sceneType, *mergedPopups()).empty();
  if (found) expectPopup();
  debug(found ? "Have Popup for sceneType:%d" : "No Popup for sceneType:%d", sceneType);
  return found;
}

// A game that asks is about to show. The interface belongs to the main thread, and any thread may
// ask.
void ZOVKPopupManager::expectPopup() {
  if (platform_->mainQueue.isMainThread()) return platform_->userInterface.prepare();
  platform_->mainQueue.async([platform = platform_] { platform->userInterface.prepare(); });
}

PopupList ZOVKPopupManager::getValidPopupForSceneType(std::uint64_t sceneType,
                                                      const PopupList& srcPopups) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::getValidPopupForSceneType");
  debug("Get valid Popup, sceneType:%d, srcPopups count:%d", sceneType, srcPopups.size());
  if (srcPopups.empty()) {
    logError("srcPopups empty");
    return {};
  }
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  if (files == nullptr) return {};
  SelectionContext context{getCurrentTime(), loginState(), *files, files->newGlance()};
  PopupList valid;
  judgeForSceneType(srcPopups, sceneType, context, keepPassed(valid));
  rankPopups(valid);
  return valid;
}

PopupList ZOVKPopupManager::getValidPopupForScene(const std::string& scene,
                                                  const PopupList& srcPopups) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::getValidPopupForScene");
  debug("Get valid Popup, scene:%@, srcPopups count:%d", scene, srcPopups.size());
  if (scene.empty()) {
    logError("Param scene illegal");
    return {};
  }
  if (srcPopups.empty()) {
    debug("srcPopups empty");
    return {};
  }
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  if (files == nullptr) return {};
  SelectionContext context{getCurrentTime(), loginState(), *files, files->newGlance()};
  PopupList valid;
  judgeForScene(srcPopups, scene, context, keepPassed(valid));
  return valid;
}

}  // namespace zovk
