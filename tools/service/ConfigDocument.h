#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include <boost/json/object.hpp>

#include "service/Folder.h"
#include "zovkpopup/ServiceDocument.h"

namespace zovk::service {

/// Completes the configuration documents of the folder: `{{base}}` stands for the service's
/// address, and an entry may name its page file in a member "page" instead of giving "uri", "sig"
/// and "content_type". Given members stay unchanged. Any thread.
class ConfigDocument {
 public:
  ConfigDocument(const Folder& folder, std::string base)
      : folder_(folder), base_(std::move(base)) {}

  /// Returns the bytes of a page file by its name, or nothing if there is none.
  using PageSource = tool::PageSource;

  /// Throws FolderError if the file is missing or cannot be completed.
  std::string text(const std::string& fileName) const;
  /// Does the same for a text that is not in a file yet; `what` names it in the error.
  std::string completed(std::string text, const std::string& what, const PageSource& pages) const;
  /// Returns the pages of the folder.
  PageSource pages() const;
  const std::string& base() const { return base_; }

 private:
  const Folder& folder_;
  std::string base_;
};

}  // namespace zovk::service
