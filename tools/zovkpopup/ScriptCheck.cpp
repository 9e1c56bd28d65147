#include "zovkpopup/ScriptCheck.h"

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "zovkpopup/PageCheck.h"
#include "zovkpopup/ScriptBatch.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

// The scripts that one run of the helper gets.
constexpr std::size_t kBytesAtOnce = 16U * 1024U * 1024U;
// Parsing 64 MiB takes a few seconds.
constexpr std::chrono::seconds kLongestRun{120};

void parse(ScriptBatch& batch, const std::vector<ReadPage>& pages, Problems& problems) {
  for (const ScriptFault& fault : batch.parse(kLongestRun)) {
    problems.add(problemOf(fault, pages[fault.page]));
  }
}

void addPage(ScriptBatch& batch, std::size_t number, const ReadPage& page, Problems& problems) {
  const auto skip = [&page, &problems](const char* why) {
    problems.hint(
        entryPath(page.entry),
        "the scripts of the page " + page.file.filename().string() + " were not checked: " + why);
  };
  std::error_code ignored;
  if (std::filesystem::file_size(page.file, ignored) > kLargestPage) return skip("it is too large");
  if (!batch.add(number, readFile(page.file))) skip("its encoding is not known");
}

}  // namespace

void checkScripts(Problems& problems) {
  const std::vector<ReadPage> pages = problems.pages();
  try {
    ScriptBatch batch;
    for (std::size_t i = 0; i < pages.size(); ++i) {
      addPage(batch, i, pages[i], problems);
      if (batch.bytes() >= kBytesAtOnce) parse(batch, pages, problems);
    }
    parse(batch, pages, problems);
  } catch (const ToolError& error) {
    problems.hint("", std::string("the scripts of the pages were not checked: ") + error.what());
  }
}

}  // namespace zovk::tool
