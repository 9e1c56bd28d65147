#pragma once

#include <cstdint>
#include <string>

#include "zovkpopup/Options.h"
#include "zovkpopup/PageFolder.h"

namespace zovk::tool {

/// A document on disk, read as the options ask.
struct OpenDocument {
  std::string text;
  std::uint64_t configType;
  PageFolder pages;
  double now;
  bool mayTakeBack = false;  ///< A past `expire_time` takes a popup back.
};

/// Throws ToolError if there is no such document, or no such folder.
OpenDocument openDocument(const DocumentOptions& options);

}  // namespace zovk::tool
