#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include <boost/json/object.hpp>

#include "zovkpopup/Release.h"

namespace zovk::tool {

/// The record of what was published where, kept as `record.json` in a folder together with the
/// releases themselves. Each target has its releases, oldest first, and the one that is live.
class PublishRecord {
 public:
  /// Begins a new record if there is none. Throws ToolError if the present one cannot be read.
  PublishRecord(std::filesystem::path folder, std::string target);

  const std::filesystem::path& folder() const { return folder_; }
  /// Returns a moment for the next release: now, but later than every release of this record.
  std::time_t nextTime(std::time_t now) const;
  /// Returns the release before the live one, or nothing if there is none.
  std::optional<Release> before() const;

  /// Adds a release that has gone live. Throws ToolError if it cannot be stored.
  void add(const Release& release, const std::string& document);
  /// Records that a release of the record has gone live again.
  void setLive(const Release& release);

 private:
  boost::json::object& targetRecord();
  void save() const;

  std::filesystem::path folder_;
  std::string target_;
  boost::json::object record_;
};

}  // namespace zovk::tool
