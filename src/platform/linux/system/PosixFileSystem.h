#pragma once

#include "zovkpopup/platform/FileSystem.h"

namespace zovk {

/// The files of the system. Only regular files are read and written, so that a pipe or a device in
/// the place of a file cannot block the game. New files and directories are for the user alone
/// (0700, 0600).
class PosixFileSystem : public FileSystem {
 public:
  bool exists(const std::string& path) const override;
  std::optional<FileIdentity> identity(const std::string& path) const override;
  std::error_code createDirectory(const std::string& path) override;
  std::error_code remove(const std::string& path) override;
  std::optional<std::vector<std::string>> listRecursively(
      const std::string& directory) const override;
  std::optional<std::string> read(const std::string& path) const override;
  bool readPieces(const std::string& path,
                  const std::function<void(std::string_view piece)>& sink) const override;
  std::error_code writeAtomically(const std::string& path, std::string_view bytes) override;
  std::error_code append(const std::string& path, std::string_view bytes) override;
};

}  // namespace zovk
