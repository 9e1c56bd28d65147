#pragma once

#include <filesystem>

#include "zovkpopup/PublishTarget.h"

namespace zovk::tool {

/// A folder of this machine, in the form that the edge serves: `current` is a link to the release,
/// and is replaced in one step.
class FolderTarget : public PublishTarget {
 public:
  explicit FolderTarget(std::filesystem::path site) : site_(std::move(site)) {}

  void upload(const Release& release) override;
  void activate(const Release& release) override;

 private:
  void put(const Release& release, const std::string& key) const;

  std::filesystem::path site_;
};

}  // namespace zovk::tool
