#pragma once

#include <filesystem>

namespace zovk::tool {

/// A temporary folder; it is removed with its contents when the object is destroyed.
class OwnFolder {
 public:
  /// Throws ToolError if it cannot be made.
  OwnFolder();
  ~OwnFolder();
  OwnFolder(const OwnFolder&) = delete;
  OwnFolder& operator=(const OwnFolder&) = delete;
  const std::filesystem::path& path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace zovk::tool
