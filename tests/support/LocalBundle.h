#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <boost/json/array.hpp>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// A test's own directory; it is removed with the test.
class ScratchDirectory {
 public:
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// A game's resource directory with its own resource bundle: the layouts and images of the build,
/// and a local document with page files.
class LocalBundle {
 public:
  LocalBundle();

  std::string resourceDirectory() const { return directory_.path().string(); }
  std::filesystem::path bundle() const { return directory_.path() / "ZOVKPopupResource.bundle"; }

  /// Adds a popup whose page is `html`. Content type, digest and config type are filled in.
  void addPage(ZOVKPopupModel popup, const std::string& html);
  /// Returns the page files added so far.
  const std::vector<std::string>& pagePaths() const { return pagePaths_; }
  /// Writes the document with all popups added so far.
  void write() const;

 private:
  ScratchDirectory directory_;
  boost::json::array entries_;
  std::vector<std::string> pagePaths_;
};

/// Returns a page that posts `action` when its button is clicked or, with `atOnce`, at once.
std::string answeringPage(const std::string& action, const std::string& message, bool atOnce);

}  // namespace zovk
