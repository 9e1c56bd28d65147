#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

#include "service/Folder.h"
#include "zovkpopup/ServiceDocument.h"

namespace zovk::service {

/// Configuration documents of the folder, completed for their author: `{{base}}` stands for the
/// service's address, and an entry may name its page file in a member "page" instead of giving
/// "uri", "sig" and "content_type". Members that are given stay as they are. Any thread.
class ConfigDocument {
 public:
  ConfigDocument(const Folder& folder, std::string base)
      : folder_(folder), base_(std::move(base)) {}

  /// The bytes of a page file by its name; absent when there is none.
  using PageSource = tool::PageSource;

  /// Throws FolderError when the file is not there or cannot be completed.
  std::string text(const std::string& fileName) const;
  /// The same for a text that is in no file yet; `what` names it in the error.
  std::string completed(std::string text, const std::string& what, const PageSource& pages) const;
  /// The pages of the folder.
  PageSource pages() const;
  const std::string& base() const { return base_; }

 private:
  const Folder& folder_;
  std::string base_;
};

}  // namespace zovk::service
