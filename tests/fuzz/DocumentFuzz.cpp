// What a hostile service, a damaged file or a hasty author can make of the configuration: the
// document of the last answer, the one of the bundle, the once-record, and a new answer, each a
// section of the input. What is selected from them is compared with what is explained of them.
#include <algorithm>

#include "engine/Selection.h"
#include "fuzz/Engine.h"

namespace zovk {
namespace {

constexpr const char* kForeignFile = "/home/player/Library/Caches/foreign";
/// Documents name many scenes; a few of them are enough.
constexpr std::size_t kMostQuestions = 8;

void expectRanked(const PopupList& selected, std::string_view input) {
  for (std::size_t i = 1; i < selected.size(); ++i) {
    if (ranksBefore(*selected[i], *selected[i - 1])) fail("a better popup comes later", input);
  }
}

std::size_t rankedIn(const ZOVKPopupExplanation& explanation) {
  return static_cast<std::size_t>(
      std::count_if(explanation.popups.begin(), explanation.popups.end(),
                    [](const ZOVKPopupExplainedPopup& popup) { return popup.rank > 0; }));
}

void ask(Engine& engine, const PopupList& all, std::string_view input) {
  for (std::size_t i = 0; i < std::min(all.size(), kMostQuestions); ++i) {
    const ZOVKPopupModel& popup = *all[i];
    const PopupList ofType = engine->getValidPopupForSceneType(popup.scene_type, all);
    expectRanked(ofType, input);
    if (engine->havePopup(popup.scene_type) != !ofType.empty()) fail("have, and have not", input);
    if (rankedIn(engine->explain("", popup.scene_type)) != ofType.size()) {
      fail("a scene type is explained otherwise than it is selected", input);
    }
    if (popup.scene.empty()) continue;
    const PopupList ofScene = engine->getValidPopupForScene(popup.scene, all);
    if (ofScene.size() > 1) fail("a scene with two popups", input);
    if (rankedIn(engine->explain(popup.scene, 0)) != ofScene.size()) {
      fail("a scene is explained otherwise than it is selected", input);
    }
  }
}

void expectMerged(Engine& engine, std::string_view input) {
  const std::size_t remote = engine->remotePopupArr().size();
  const std::size_t local = engine->localPopupArr().size();
  const std::size_t merged = engine->mergePopupArr().size();
  if (merged > remote + local || merged < std::max(remote, local)) {
    fail("a popup too many or too few", input);
  }
}

}  // namespace

void fuzz(std::string_view input) {
  const auto sections = sectionsOf(input, 4);
  Engine engine;
  MemoryFileSystem& files = engine.memory().files;
  files.addFile(kForeignFile, "of another program");
  files.addFile(std::string(kCacheDirectory) + "ZOVKPopupRemote.config", sections[0]);
  files.addFile(std::string(kBundleDirectory) + "ZOVKPopupLocal.config", sections[1]);
  files.addFile(std::string(kCacheDirectory) + kOnceRecordFile, sections[2]);

  expectMerged(engine, input);
  ask(engine, engine->mergePopupArr(), input);
  engine->handleRemoteConfigResponse(sections[3]);
  expectMerged(engine, input);
  ask(engine, engine->mergePopupArr(), input);
  engine->needToShowPolicy();
  engine->deleteExpiredPopup();
  if (files.text(kForeignFile) != "of another program") fail("a file of others", input);
}

}  // namespace zovk
