#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "record/ZOVKPopupModel.h"

namespace zovk::tool {

/// A folder with page files: called as the engine calls them, or as in the address that they are
/// downloaded from.
class PageFolder {
 public:
  explicit PageFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// The file of a page-file popup; absent when there is none.
  std::optional<std::filesystem::path> find(const ZOVKPopupModel& popup) const;
  /// Where `find` looks, best place first.
  std::vector<std::filesystem::path> places(const ZOVKPopupModel& popup) const;
  const std::filesystem::path& folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
};

/// "There is no page file A or B.", for people.
std::string missingPageText(const PageFolder& pages, const ZOVKPopupModel& popup);

}  // namespace zovk::tool
