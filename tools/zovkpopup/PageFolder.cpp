#include "zovkpopup/PageFolder.h"

#include <boost/url/parse.hpp>
#include <boost/url/url_view.hpp>

namespace zovk::tool {
namespace {

// Returns the last piece of an address's path, decoded; empty if it cannot be a file's name.
std::string lastPiece(const std::string& uri) {
  const auto parsed = boost::urls::parse_uri_reference(uri);
  if (!parsed || parsed->segments().empty()) return "";
  std::string name = parsed->segments().back();
  const bool isName = name != "." && name != ".." && name.find('/') == std::string::npos &&
                      name.find('\0') == std::string::npos;
  return isName ? name : "";
}

}  // namespace

std::vector<std::filesystem::path> PageFolder::places(const ZOVKPopupModel& popup) const {
  std::vector<std::filesystem::path> result;
  for (const std::string& name : {popup.getPopupFileName(), lastPiece(popup.uri)}) {
    if (!name.empty() && name.find('/') == std::string::npos) result.push_back(folder_ / name);
  }
  return result;
}

std::optional<std::filesystem::path> PageFolder::find(const ZOVKPopupModel& popup) const {
  for (const std::filesystem::path& path : places(popup)) {
    std::error_code ignored;
    if (std::filesystem::is_regular_file(path, ignored)) return path;
  }
  return std::nullopt;
}

std::string missingPageText(const PageFolder& pages, const ZOVKPopupModel& popup) {
  std::string text = "There is no page file";
  const char* separator = " ";
  for (const std::filesystem::path& path : pages.places(popup)) {
    text += separator + path.string();
    separator = " or ";
  }
  return text + "; is it elsewhere (--pages)?";
}

}  // namespace zovk::tool
