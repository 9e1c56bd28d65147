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
  /// Throws ToolError when the page cannot be read or is none, or the library's bundle is not
  /// installed.
  explicit PreviewBundle(const PreviewOptions& options);

  std::filesystem::path resources() const { return folder_.path() / "resources"; }
  std::filesystem::path home() const { return folder_.path() / "home"; }
  /// The library's helper program.
  std::filesystem::path helper() const;
  /// The scene of the popup.
  const std::string& scene() const { return scene_; }
  /// The page file, or the address, that was asked for.
  const std::string& target() const { return target_; }
  /// Where the popup's page is loaded from.
  std::string pageAddress() const;
  /// What to call the page to people.
  std::string pageName() const;
  /// Takes the page file in as it is now. Throws ToolError like the constructor.
  void update() const;

 private:
  std::filesystem::path bundle() const { return resources() / "ZOVKPopupResource.bundle"; }

  OwnFolder folder_;
  std::string scene_;
  std::string target_;
  std::string file_;  ///< Of the page, in the bundle; empty for an address.
};

}  // namespace zovk::tool
