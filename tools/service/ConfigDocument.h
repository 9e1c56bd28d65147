#pragma once

#include <string>

#include <boost/json/object.hpp>

#include "service/Folder.h"

namespace zovk::service {

/// Configuration documents of the folder, completed for their author: `{{base}}` stands for the
/// service's address, and an entry may name its page file in a member "page" instead of giving
/// "uri", "sig" and "content_type". Members that are given stay as they are. Any thread.
class ConfigDocument {
 public:
  ConfigDocument(const Folder& folder, std::string base)
      : folder_(folder), base_(std::move(base)) {}

  /// Throws FolderError when the file is not there or cannot be completed.
  std::string text(const std::string& fileName) const;

 private:
  void complete(boost::json::object& entry) const;
  void completeFromPage(boost::json::object& entry, const std::string& page) const;

  const Folder& folder_;
  std::string base_;
};

}  // namespace zovk::service
