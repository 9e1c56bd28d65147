#include "zovkpopup/ScriptCheck.h"

#include <filesystem>
#include <system_error>
#include <utility>
#include <vector>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <fmt/format.h>

#include "support/Utf8.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/PageCheck.h"
#include "zovkpopup/PageScripts.h"
#include "zovkpopup/PreviewBundle.h"
#include "zovkpopup/Shell.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

// The scripts that one run of the helper gets, so that many pages need few runs.
constexpr std::size_t kBytesAtOnce = 16U * 1024U * 1024U;

/// Collects scripts and has the helper parse them.
class ScriptParser {
 public:
  explicit ScriptParser(Problems& problems) : problems_(problems) {}

  void add(const ReadPage& page, const PageScript& script) {
    scripts_.push_back(boost::json::object{
        {"text", script.text}, {"line", script.line}, {"module", script.isModule}});
    pages_.push_back(page);
    bytes_ += script.text.size();
    if (bytes_ >= kBytesAtOnce) parse();
  }

  void parse() {
    if (scripts_.empty()) return;
    const OwnFolder folder;
    const std::filesystem::path asked = folder.path() / "scripts.json";
    const std::filesystem::path found = folder.path() / "faults.json";
    writeFile(asked, boost::json::serialize(scripts_));
    runShell(fmt::format("{} --check-scripts {} {} 2>/dev/null",
                         shellWord(installedHelper().string()), shellWord(asked.string()),
                         shellWord(found.string())));
    report(parseJson(readFile(found)).value.as_array());
    scripts_.clear();
    pages_.clear();
    bytes_ = 0;
  }

 private:
  void report(const boost::json::array& faults) {
    for (std::size_t i = 0; i < faults.size() && i < pages_.size(); ++i) {
      if (!faults[i].is_object()) continue;
      problems_.error(entryPath(pages_[i].entry),
                      fmt::format("the page {} has a script that cannot be parsed, at line {}: {}",
                                  pages_[i].file.filename().string(),
                                  faults[i].at("line").to_number<std::int64_t>(),
                                  std::string_view(faults[i].at("message").as_string())));
    }
  }

  Problems& problems_;
  boost::json::array scripts_;
  std::vector<ReadPage> pages_;  ///< The page of each script.
  std::size_t bytes_ = 0;
};

}  // namespace

void checkScripts(Problems& problems) {
  ScriptParser parser(problems);
  try {
    const std::vector<ReadPage> pages = problems.pages();
    for (const ReadPage& page : pages) {
      const std::string text = readFile(page.file);
      // The check of the page itself has complained about either.
      if (text.size() > kLongPage || !isUtf8(text)) continue;
      for (const PageScript& script : scriptsOf(text)) parser.add(page, script);
    }
    parser.parse();
  } catch (const ToolError& error) {
    problems.hint("", std::string("the scripts of the pages were not checked: ") + error.what());
  }
}

}  // namespace zovk::tool
