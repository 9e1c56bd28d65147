#pragma once

#include <filesystem>
#include <string>

#include "zovkpopup/Options.h"
#include "zovkpopup/OwnFolder.h"

namespace zovk::tool {

/// A game with only one popup: a resource directory with the library's bundle and a local document,
/// and a home directory.
class PreviewBundle {
 public:
  /// Throws ToolError if the page cannot be read or is not a page, or if the library's bundle is
  /// not installed.
  explicit PreviewBundle(const PreviewOptions& options);

  std::filesystem::path resources() const { return folder_.path() / "resources"; }
  std::filesystem::path home() const { return folder_.path() / "home"; }
  /// Returns the library's helper program.
  std::filesystem::path helper() const;
  /// Returns the scene of the popup.
  const std::string& scene() const { return scene_; }
  /// Returns the requested page file or address.
  const std::string& target() const { return target_; }
  /// Returns the address from which the popup's page is loaded.
  std::string pageAddress() const;
  /// Returns the page's name for people.
  std::string pageName() const;
  /// Reads the page file again. Throws ToolError like the constructor.
  void update() const;

 private:
  std::filesystem::path bundle() const { return resources() / "ZOVKPopupResource.bundle"; }

  OwnFolder folder_;
  std::string scene_;
  std::string target_;
  std::string file_;  ///< The page's file in the bundle; empty for an address.
};

}  // namespace zovk::tool
