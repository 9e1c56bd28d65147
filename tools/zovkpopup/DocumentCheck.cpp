#include "zovkpopup/DocumentCheck.h"

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>

#include "zovkpopup/DocumentEngine.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/NoJson.h"
#include "zovkpopup/PopupCheck.h"
#include "zovkpopup/ShapeCheck.h"

namespace zovk::tool {
namespace {

// The records belong to the entries that the engine does not pass over.
void checkRecords(const boost::json::value& document, DocumentEngine& engine,
                  const OpenDocument& opened, Problems& problems) {
  PopupCheck check(engine, opened.pages, opened.now, opened.mayTakeBack, problems);
  const boost::json::array& entries = document.at("popups").as_array();
  std::size_t record = 0;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto* const entry = entries[i].if_object();
    if (entry != nullptr && !entry->empty()) check.check(*engine.popups()[record++], i);
  }
}

}  // namespace

Problems problemsIn(const OpenDocument& opened) {
  Problems problems;
  DocumentEngine engine(opened.now);
  const auto rejection = engine.load(opened.text, opened.configType, opened.pages);
  const JsonText json = parseJson(opened.text);
  if (!json.error.empty()) {
    problems.add({Severity::kError, "", whyNoJson(opened.text, json), json.line, json.column});
    return problems;
  }
  checkShape(json.value, opened.configType, problems);
  if (!rejection) {
    checkRecords(json.value, engine, opened, problems);
  } else if (problems.count(Severity::kError) == 0) {
    problems.error("", "is rejected by the engine: " + *rejection);
  }
  return problems;
}

}  // namespace zovk::tool
