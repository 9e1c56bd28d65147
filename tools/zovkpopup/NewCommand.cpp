#include <algorithm>
#include <cstdio>
#include <filesystem>

#include <boost/json/object.hpp>
#include <fmt/format.h>

#include "record/ZOVKPopupModel.h"
#include "text/Md5.h"
#include "zovkpopup/Commands.h"
#include "zovkpopup/Embedded.h"
#include "zovkpopup/JsonText.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

namespace fs = std::filesystem;

// The name becomes a file's name and a piece of an address.
void refuseBadName(const std::string& name) {
  const bool good = !name.empty() && name.front() != '-' && name.front() != '.' &&
                    name.find_first_not_of(
                        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                        "0123456789-_.") == std::string::npos;
  if (!good) throw ToolError(name + ": is no name; use letters, digits, dashes, dots, underscores");
}

std::string starterPage(const std::string& name) {
  const auto* const found = std::find_if(kStarterPages.begin(), kStarterPages.end(),
                                         [&name](const auto& page) { return page.name == name; });
  return std::string(found->text);  // the command line takes no other name
}

boost::json::object documentFor(const std::string& name, const std::string& page, bool isPolicy) {
  const std::string service = "https://popups.example";
  const boost::json::object popup{{"pop_id", 1},
                                  {"scene", isPolicy ? kPolicyScene : name},
                                  {"scene_type", isPolicy ? 0 : 1},
                                  {"valid_platform", ""},
                                  {"pop_type", 1},
                                  {"content_type", 1},
                                  {"uri", service + "/pages/" + name + ".html"},
                                  {"sig", md5Hex(page)},
                                  {"pop_freq", 2},
                                  {"priority", 0},
                                  {"publish_time", 1},
                                  {"report_url", service + "/report/" + name},
                                  {"valid_time", 0},
                                  {"expire_time", 0}};
  return {{"code", 0}, {"message", ""}, {"server_time", 0}, {"popups", {popup}}};
}

void refuseToReplace(const fs::path& path) {
  std::error_code ignored;
  if (fs::exists(fs::symlink_status(path, ignored))) {
    throw ToolError(path.string() + ": is there already; --force replaces it", kCannotCreate);
  }
}

}  // namespace

int runNew(const NewOptions& options) {
  refuseBadName(options.name);
  std::error_code ignored;
  if (!fs::is_directory(options.folder, ignored)) {
    throw ToolError("--folder " + options.folder + ": is no folder", kCannotCreate);
  }
  const fs::path page = fs::path(options.folder) / (options.name + ".html");
  const fs::path document = fs::path(options.folder) / (options.name + ".json");
  if (!options.force) {
    refuseToReplace(page);
    refuseToReplace(document);
  }
  const std::string text = starterPage(options.page);
  writeFile(page, text);
  writeFile(document, prettyJson(documentFor(options.name, text, options.page == "policy")));
  std::puts(
      fmt::format("{}\n{}\nAfter a change to the page, put \"zovkpopup sig {}\" into \"sig\".",
                  page.string(), document.string(), page.string())
          .c_str());
  return kSuccess;
}

}  // namespace zovk::tool
