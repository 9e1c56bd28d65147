#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <boost/json/object.hpp>

#include "zovkpopup/Release.h"

namespace zovk::tool {

/// What was published where, kept as `record.json` in a folder together with the releases
/// themselves. Each target has its releases, oldest first, and the one that is live.
class PublishRecord {
 public:
  /// Begins a new one where there is none. Throws ToolError when what is there cannot be read.
  PublishRecord(std::filesystem::path folder, std::string target);

  const std::filesystem::path& folder() const { return folder_; }
  /// A moment for the next release: now, and later than every release of this record.
  std::time_t nextTime(std::time_t now) const;
  /// The release before the one that is live; absent when there is none.
  std::optional<Release> before() const;

  /// Adds a release that has gone live. Throws ToolError when it cannot be kept.
  void add(const Release& release, const std::string& document);
  /// The release, one of the record, has gone live again.
  void setLive(const Release& release);

 private:
  boost::json::object& targetRecord();
  void save() const;

  std::filesystem::path folder_;
  std::string target_;
  boost::json::object record_;
};

}  // namespace zovk::tool
