#pragma once

#include <optional>
#include <string>

#include "service/Answer.h"
#include "service/Folder.h"

namespace zovk::service {

/// What a client says it has already; empty where it says nothing.
struct Validators {
  std::string ifNoneMatch;
  std::string ifModifiedSince;
};

/// A page file, from `pages/` of the folder; absent when there is none of that name.
std::optional<FolderFile> readPage(const Folder& folder, const std::string& name);

/// A page with its validators, or the news that the client's copy is still good.
Answer answerPage(const Folder& folder, const std::string& name, const Validators& validators);

}  // namespace zovk::service
