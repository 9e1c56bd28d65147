#include "platform/linux/system/Paths.h"

#include <filesystem>
#include <system_error>

#include <dlfcn.h>
#include <link.h>

namespace zovk {
namespace {

namespace fs = std::filesystem;

// Returns the file of the shared library that holds this code, or of the program.
fs::path ownFile() {
  Dl_info info{};
  void* extra = nullptr;
  static const char inThisLibrary = 0;
  const bool found = ::dladdr1(&inThisLibrary, &info, &extra, RTLD_DL_LINKMAP) != 0;
  const auto* const map = static_cast<const link_map*>(extra);
  // The program itself has no name in the list of libraries.
  if (!found || map == nullptr || *map->l_name == '\0') return programPath();
  std::error_code error;
  return fs::canonical(map->l_name, error);
}

}  // namespace

std::string programPath() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error).string();
}

std::string absolutePath(const std::string& path) {
  std::error_code error;
  fs::path absolute = fs::absolute(path, error).lexically_normal();
  if (!absolute.has_filename() && absolute.has_relative_path()) absolute = absolute.parent_path();
  return absolute.string();
}

std::optional<std::string> findInstalled(const std::string& name) {
  const fs::path beside = ownFile().parent_path() / "zovkpopup";
  for (const fs::path& directory : {beside, fs::path(ZOVKPOPUP_RUNTIME_DIRECTORY)}) {
    const fs::path candidate = directory / name;
    std::error_code error;
    if (fs::exists(candidate, error)) return candidate.string();
  }
  return std::nullopt;
}

}  // namespace zovk
