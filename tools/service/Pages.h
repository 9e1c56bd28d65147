#pragma once

#include <optional>
#include <string>

#include "service/Answer.h"
#include "service/Folder.h"

namespace zovk::service {

/// The version that a client already has; empty if it says nothing.
struct Validators {
  std::string ifNoneMatch;
  std::string ifModifiedSince;
};

/// Returns a page file from `pages/` of the folder, or nothing if there is none of that name.
std::optional<FolderFile> readPage(const Folder& folder, const std::string& name);

/// Returns a page with its validators, or the answer that the client's copy is still good.
Answer answerPage(const Folder& folder, const std::string& name, const Validators& validators);

}  // namespace zovk::service
