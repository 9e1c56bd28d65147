#include <algorithm>
#include <cstdio>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "zovkpopup/Commands.h"
#include "zovkpopup/DocumentEngine.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

// The engine names a place in memory; its user knows the folder.
void nameRealPlaces(ZOVKPopupExplanation& explanation, const DocumentEngine& engine,
                    const PageFolder& pages) {
  for (std::size_t i = 0; i < explanation.popups.size(); ++i) {
    ZOVKPopupExplainedPopup& popup = explanation.popups[i];
    if (popup.verdict != "file_missing") continue;
    const ZOVKPopupModel& record = *engine.popups()[i];
    popup.sentence = missingPageText(pages, record);
    const auto places = pages.places(record);
    popup.wanted = places.empty() ? "" : places.front().string();
  }
}

boost::json::object jsonOf(const ZOVKPopupExplainedPopup& popup) {
  return {{"scene", popup.scene},       {"pop_id", popup.pop_id}, {"page", popup.page},
          {"verdict", popup.verdict},   {"wanted", popup.wanted}, {"found", popup.found},
          {"sentence", popup.sentence}, {"rank", popup.rank}};
}

void printForScripts(const ZOVKPopupExplanation& explanation) {
  boost::json::array popups;
  for (const auto& popup : explanation.popups) popups.push_back(jsonOf(popup));
  const boost::json::object result{{"sentence", explanation.sentence},
                                   {"popups", std::move(popups)}};
  std::fputs(prettyJson(result).c_str(), stdout);
}

void printForPeople(const ZOVKPopupExplanation& explanation) {
  std::size_t sceneWidth = std::size("SCENE") - 1;
  for (const auto& popup : explanation.popups) {
    sceneWidth = std::max(sceneWidth, popup.scene.size());
  }
  std::string text = explanation.sentence + "\n";
  text += fmt::format("\n{:>4} {:>8}  {:<{}}  {:<16}  {}\n", "RANK", "POP_ID", "SCENE", sceneWidth,
                      "VERDICT", "WHY");
  for (const auto& popup : explanation.popups) {
    text += fmt::format("{:>4} {:>8}  {:<{}}  {:<16}  {}\n",
                        popup.rank > 0 ? std::to_string(popup.rank) : "-", popup.pop_id,
                        popup.scene, sceneWidth, popup.verdict, popup.sentence);
  }
  std::fputs(text.c_str(), stdout);
}

}  // namespace

int runExplain(const ExplainOptions& options) {
  const OpenDocument opened = openDocument(options.document);
  DocumentEngine engine(opened.now);
  const auto rejection = engine.load(opened.text, opened.configType, opened.pages);
  if (rejection) {
    throw ToolError(options.document.file + ": the engine rejects it: " + *rejection +
                        " (zovkpopup check tells more)",
                    kBadData);
  }
  ZOVKPopupExplanation explanation =
      engine.explain(options.scene, options.sceneType, options.channel);
  nameRealPlaces(explanation, engine, opened.pages);
  if (options.document.json) {
    printForScripts(explanation);
  } else {
    printForPeople(explanation);
  }
  return kSuccess;
}

}  // namespace zovk::tool
