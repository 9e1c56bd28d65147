#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "record/ZOVKPopupModel.h"

namespace zovk::tool {

/// A folder with page files, which have the engine's names, or those in the addresses that they are
/// downloaded from.
class PageFolder {
 public:
  explicit PageFolder(std::filesystem::path folder) : folder_(std::move(folder)) {}

  /// Returns the file of a page-file popup, or nothing if there is none.
  std::optional<std::filesystem::path> find(const ZOVKPopupModel& popup) const;
  /// Returns the places where `find` looks, best first.
  std::vector<std::filesystem::path> places(const ZOVKPopupModel& popup) const;
  const std::filesystem::path& folder() const { return folder_; }

 private:
  std::filesystem::path folder_;
};

/// "There is no page file A or B.", for people.
std::string missingPageText(const PageFolder& pages, const ZOVKPopupModel& popup);

}  // namespace zovk::tool
