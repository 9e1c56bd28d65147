#include "zovkpopup/OpenDocument.h"

#include <filesystem>
#include <optional>
#include <utility>

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>

#include "zovkpopup/JsonText.h"
#include "zovkpopup/Moment.h"
#include "zovkpopup/ServiceDocument.h"
#include "zovkpopup/TextFile.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

std::uint64_t configTypeOf(const DocumentOptions& options) {
  const bool named = std::filesystem::path(options.file).filename() == "ZOVKPopupLocal.config";
  return options.as == "local" || options.as == "bundle" || (options.as.empty() && named)
             ? kConfigLocal
             : kConfigRemote;
}

std::filesystem::path pageFolderOf(const DocumentOptions& options) {
  if (options.pages.empty()) {
    const std::filesystem::path folder = std::filesystem::path(options.file).parent_path();
    return options.as == "service" ? folder / "pages" : folder;
  }
  std::error_code ignored;
  if (std::filesystem::is_directory(options.pages, ignored)) return options.pages;
  throw ToolError("--pages " + options.pages + ": is no folder", kNoInput);
}

// Returns the document as the development service sends it. A text that is not a document stays
// unchanged, so that the check reports it.
std::string asServed(const std::string& text, const std::filesystem::path& pages) {
  // What the service's own address will be is not known, nor anything that games object to.
  const std::string base = "https://localhost";
  boost::json::value document = parseJson(withBase(text, base)).value;
  if (!document.is_object()) return text;
  completePopups(document.get_object(), base,
                 [&pages](const std::string& name) -> std::optional<std::string> {
                   const std::filesystem::path file = pages / name;
                   std::error_code ignored;
                   const bool isName = std::filesystem::path(name).filename() == name;
                   if (!isName || !std::filesystem::is_regular_file(file, ignored)) return {};
                   return readFile(file);
                 });
  return boost::json::serialize(document);
}

}  // namespace

OpenDocument openDocument(const DocumentOptions& options) {
  const std::filesystem::path pages = pageFolderOf(options);
  const bool isService = options.as == "service";
  std::string text = readFile(options.file);
  if (isService) text = asServed(text, pages);
  return {std::move(text), configTypeOf(options), PageFolder(pages), momentOf(options.at),
          isService || options.as == "site"};
}

}  // namespace zovk::tool
