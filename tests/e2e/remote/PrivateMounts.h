#pragma once

#include <filesystem>

namespace zovk {

// Mounts that only this process and its later children see. Make them while the process has one
// thread. Not every machine allows them.

/// Replaces a directory's contents by an empty disk of that many kilobytes.
class SmallDisk {
 public:
  SmallDisk(const std::filesystem::path& directory, int kilobytes);
  ~SmallDisk();
  SmallDisk(const SmallDisk&) = delete;
  SmallDisk& operator=(const SmallDisk&) = delete;

  bool isMounted() const { return mounted_; }

 private:
  const std::filesystem::path directory_;
  bool mounted_ = false;
};

/// Makes the certificates in the file the only authorities of the system's store. Returns false if
/// that is not allowed.
bool trustOnly(const std::filesystem::path& certificates);

}  // namespace zovk
