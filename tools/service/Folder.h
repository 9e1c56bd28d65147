#pragma once

#include <ctime>
#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>

#include <boost/json/object.hpp>

namespace zovk::service {

/// Something in the served folder is wrong; the text is for its author.
class FolderError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct FolderFile {
  std::string bytes;
  std::time_t changed = 0;
};

/// The served folder. Files are read again each time, so that they can be edited while the service
/// runs. Any thread. A file that exists but cannot be used throws FolderError.
class Folder {
 public:
  explicit Folder(std::filesystem::path root) : root_(std::move(root)) {}

  /// Returns a file, or nothing if there is no such regular file.
  std::optional<FolderFile> read(const std::filesystem::path& name) const;
  /// Returns the object in a file, or nothing if there is no such file.
  std::optional<boost::json::object> readObject(const std::string& name) const;
  std::filesystem::path path(const std::filesystem::path& name) const { return root_ / name; }

 private:
  std::filesystem::path root_;
};

/// Returns whether a name from a request can only mean a file directly in a directory.
bool isPlainName(std::string_view name);
/// Returns the object of a JSON text; `what` names the text in the error.
boost::json::object objectOf(const std::string& text, const std::string& what);

}  // namespace zovk::service
