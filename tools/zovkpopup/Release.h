#pragma once

#include <ctime>
#include <filesystem>
#include <string>
#include <vector>

#include "zovkpopup/OpenDocument.h"
#include "zovkpopup/Options.h"

namespace zovk::tool {

/// The files that go live together. They are in a separate folder, in the same places as in the
/// site: `pages/SIG/NAME`, which never change, and `releases/ID`, which has the document as
/// `popup/get_info` and, below `pages`, the files of lasting addresses. Each has a compressed copy
/// beside it, with `.gz`.
struct Release {
  std::string id;
  std::time_t time = 0;
  std::filesystem::path folder;
  std::vector<std::string> pages;  ///< The keys of the page files, without the compressed ones.
};

/// Returns the keys of all files below a part of the release's folder, sorted.
std::vector<std::string> filesOf(const Release& release, const std::string& below);

/// Writes a release into `folder`, below its identifier. Page files get addresses with their
/// digest, in the document too. Throws ToolError.
Release makeRelease(const OpenDocument& opened, const PublishOptions& options, std::time_t time,
                    const std::filesystem::path& folder);

}  // namespace zovk::tool
