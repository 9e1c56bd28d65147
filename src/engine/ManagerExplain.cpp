#include <algorithm>

#include <fmt/format.h>

#include "engine/Explanation.h"
#include "engine/Selection.h"
#include "engine/ZOVKPopupManager.h"
#include "logging/LogPause.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {
namespace {

void explainUnreached(const PopupList& source, ZOVKPopupExplanation& explanation) {
  const std::size_t reached = explanation.popups.size();
  for (std::size_t i = reached; i < source.size(); ++i) {
    explanation.popups.push_back(explainedUnreached(*source[i], *source[reached - 1]));
  }
}

std::vector<std::size_t> passedBestFirst(const PopupList& source,
                                         const std::vector<ZOVKPopupExplainedPopup>& popups) {
  std::vector<std::size_t> passed;
  for (std::size_t i = 0; i < popups.size(); ++i) {
    if (popups[i].verdict == "passed") passed.push_back(i);
  }
  std::stable_sort(passed.begin(), passed.end(), [&](std::size_t a, std::size_t b) {
    return ranksBefore(*source[a], *source[b]);
  });
  return passed;
}

std::string wholeSentence(const SelectionRequest& request, std::size_t total, std::size_t passed) {
  const std::string text = requestText(request);
  if (total == 0) return "There are no popups: no configuration document was accepted.";
  if (passed == 0) return fmt::format("Nothing is shown for {}: none of {} passes.", text, total);
  return fmt::format("For {}, {} of {} would be shown.", text, passed, total);
}

}  // namespace

ZOVKPopupExplanation ZOVKPopupManager::explain(const std::string& scene, std::uint64_t sceneType) {
  const LogPause quiet;
  const SelectionRequest request{scene, sceneType};
  const PopupListPointer source = mergedPopups();
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  if (files == nullptr) return {"ZOVKPopup is not set up, or was shut down.", {}};
  SelectionContext context{getCurrentTime(), loginState(), *files, files->newGlance()};
  ZOVKPopupExplanation explanation;
  const auto judged = [&](const PopupPointer& popup, const Judgement& judgement) {
    explanation.popups.push_back(explained(*popup, judgement, request, context));
  };
  if (scene.empty()) {
    judgeForSceneType(*source, sceneType, context, judged);
  } else {
    judgeForScene(*source, scene, context, judged);
    explainUnreached(*source, explanation);
  }
  const auto passed = passedBestFirst(*source, explanation.popups);
  for (std::size_t i = 0; i < passed.size(); ++i) explanation.popups[passed[i]].rank = i + 1;
  explanation.sentence = wholeSentence(request, source->size(), passed.size());
  return explanation;
}

}  // namespace zovk
