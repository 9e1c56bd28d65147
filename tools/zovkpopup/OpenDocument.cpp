#include "zovkpopup/OpenDocument.h"

#include <filesystem>

#include "zovkpopup/Moment.h"
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
  if (options.pages.empty()) return std::filesystem::path(options.file).parent_path();
  std::error_code ignored;
  if (std::filesystem::is_directory(options.pages, ignored)) return options.pages;
  throw ToolError("--pages " + options.pages + ": is no folder");
}

}  // namespace

OpenDocument openDocument(const DocumentOptions& options) {
  return {readFile(options.file), configTypeOf(options), PageFolder(pageFolderOf(options)),
          momentOf(options.at), options.as == "site"};
}

}  // namespace zovk::tool
