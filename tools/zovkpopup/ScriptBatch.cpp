#include "zovkpopup/ScriptBatch.h"

#include <filesystem>
#include <string_view>
#include <utility>

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <fmt/format.h>

#include "zovkpopup/BriefRun.h"
#include "zovkpopup/InstalledHelper.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/OwnFolder.h"
#include "zovkpopup/PageScripts.h"
#include "zovkpopup/PageText.h"
#include "zovkpopup/TextFile.h"

namespace zovk::tool {

bool ScriptBatch::add(std::size_t page, const std::string& bytes) {
  const auto text = pageText(bytes);
  if (!text) return false;
  for (PageScript& script : scriptsOf(*text)) {
    bytes_ += script.text.size();
    scripts_.push_back(boost::json::object{
        {"text", std::move(script.text)}, {"line", script.line}, {"module", script.isModule}});
    pages_.push_back(page);
  }
  return true;
}

std::vector<ScriptFault> ScriptBatch::parse(std::chrono::seconds limit) {
  const boost::json::array scripts = std::exchange(scripts_, {});
  const std::vector<std::size_t> pages = std::exchange(pages_, {});
  bytes_ = 0;
  std::vector<ScriptFault> faults;
  if (scripts.empty()) return faults;
  const OwnFolder folder;
  const std::filesystem::path asked = folder.path() / "scripts.json";
  const std::filesystem::path found = folder.path() / "faults.json";
  writeFile(asked, boost::json::serialize(scripts));
  runBriefly(installedHelper(), {"--check-scripts", asked.string(), found.string()}, limit);
  const boost::json::value answer = parseJson(readFile(found)).value;
  for (std::size_t i = 0; i < answer.as_array().size() && i < pages.size(); ++i) {
    const auto* const fault = answer.as_array()[i].if_object();
    if (fault == nullptr) continue;
    faults.push_back({pages[i], fault->at("line").to_number<std::int64_t>(),
                      std::string(fault->at("message").as_string())});
  }
  return faults;
}

Problem problemOf(const ScriptFault& fault, const ReadPage& page) {
  return {Severity::kError, entryPath(page.entry),
          fmt::format("the page {} has a script that cannot be parsed, at line {}: {}",
                      page.file.filename().string(), fault.line, fault.message)};
}

}  // namespace zovk::tool
