#pragma once

#include <filesystem>
#include <string>

#include "zovkpopup/Options.h"

namespace zovk::tool {

/// A folder of the program's own, gone with all it holds when the object is.
class OwnFolder {
 public:
  /// Throws ToolError when it cannot be made.
  OwnFolder();
  ~OwnFolder();
  OwnFolder(const OwnFolder&) = delete;
  OwnFolder& operator=(const OwnFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// A game of nothing but one popup: a resource directory with the library's bundle and a local
/// document, and a home directory.
class PreviewBundle {
 public:
  /// Throws ToolError when the page cannot be read, or the library's bundle is not installed.
  explicit PreviewBundle(const PreviewOptions& options);

  std::filesystem::path resources() const { return folder_.path() / "resources"; }
  std::filesystem::path home() const { return folder_.path() / "home"; }
  /// The library's helper program.
  std::filesystem::path helper() const;
  /// The scene of the popup.
  const std::string& scene() const { return scene_; }

 private:
  std::filesystem::path bundle() const { return resources() / "ZOVKPopupResource.bundle"; }

  OwnFolder folder_;
  std::string scene_;
};

}  // namespace zovk::tool
