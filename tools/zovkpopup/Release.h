#pragma once

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/Options.h"

namespace zovk::tool {

/// What is put live at once. Its files lie in a folder of its own as they will lie in the site:
/// `pages/SIG/NAME`, which never change; and `releases/ID`, which has the document as
/// `popup/get_info` and, below `pages`, the files of lasting addresses. Beside each stands the same
/// compressed, with `.gz`.
struct Release {
  std::string id;
  std::time_t time = 0;
  std::filesystem::path folder;
  std::vector<std::string> pages;  ///< The keys of the page files, without the compressed ones.
};

/// The keys of all files below a piece of the release's folder, sorted.
std::vector<std::string> filesOf(const Release& release, const std::string& below);

/// Writes a release into `folder`, below its identifier. Page files get addresses with their
/// digest, in the document too. Throws ToolError.
Release makeRelease(const OpenDocument& opened, const PublishOptions& options, std::time_t time,
                    const std::filesystem::path& folder);

}  // namespace zovk::tool
