#include "zovkpopup/DocumentEngine.h"

#include "engine/LoggerSetUp.h"
#include "engine/ZOVKPopupManager.h"
#include "storage/ZOVKPopupFileManager.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk::tool {

DocumentEngine::DocumentEngine(double now) {
  memory_->scheduler.setTime(now);
  setUpLogger(memory_->shared(), memory_->sharedLog());
  setCurrentPlatform(memory_->shared());
  ZOVKPopupManager::sharedInstance();
}

DocumentEngine::~DocumentEngine() {
  memory_->shutDown();
  ZOVKPopupManager::purgeSharedInstance();
  ZOVKPopupFileManager::purgeSharedInstance();
  setCurrentPlatform(nullptr);
}

std::optional<std::string> DocumentEngine::load(std::string_view document, std::uint64_t configType,
                                                const PageFolder& pages) {
  auto& manager = *ZOVKPopupManager::sharedInstance();
  memory_->log.clear();
  if (!manager.parseConfigFile(document, configType, &popups_)) return lastError();
  addPages(pages);
  manager.setMergePopupArr(popups_);
  return std::nullopt;
}

Judgement DocumentEngine::judgeContent(const ZOVKPopupModel& popup) {
  auto& files = *ZOVKPopupFileManager::sharedInstance();
  SelectionContext context{memory_->scheduler.secondsSince1970(), {}, files, files.newGlance()};
  return judgeContentForScene(popup, context);
}

ZOVKPopupExplanation DocumentEngine::explain(const std::string& scene, std::uint64_t sceneType,
                                             std::int32_t channel) {
  ZOVKPopupManager::sharedInstance()->setChannelID(channel, "", "", "");
  return ZOVKPopupExplain::explain(scene, sceneType);
}

void DocumentEngine::addPages(const PageFolder& pages) {
  for (const PopupPointer& popup : popups_) {
    if (!popup->isPageFile()) continue;
    const auto file = pages.find(*popup);
    if (file) memory_->files.addFile(popup->getPopupFilePath(), readFile(*file));
  }
}

std::string DocumentEngine::lastError() const {
  constexpr std::string_view kStart = "[Error] ";
  for (const std::string& line : memory_->log.lines()) {
    if (line.starts_with(kStart)) return line.substr(kStart.size());
  }
  return "its code is not 0";  // the one rejection without an error line
}

}  // namespace zovk::tool
