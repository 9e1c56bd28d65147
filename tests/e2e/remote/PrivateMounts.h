#pragma once

#include <filesystem>

namespace zovk {

// Mounts that this process alone sees, with those it starts from now on. To be made while the
// process has one thread. Not every machine allows them.

/// An empty disk of so many kilobytes in place of a directory's content.
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

/// Makes the certificates in the file the only authorities that the system's store knows. False
/// where that is not allowed.
bool trustOnly(const std::filesystem::path& certificates);

}  // namespace zovk
