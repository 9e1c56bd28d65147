#include "zovkpopup/InstalledHelper.h"

#include <system_error>

#include "platform/linux/system/Paths.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {

namespace fs = std::filesystem;

// In a build folder, and of the installed tool, a program's folder is beside the library's. The
// installed service is with all programs.
fs::path libraryFolder() {
  const fs::path folder = fs::path(programPath()).parent_path();
  fs::path beside = folder.parent_path() / "zovkpopup";
  std::error_code error;
  if (fs::is_directory(beside, error)) return beside;
  return (folder / ZOVKPOPUP_PROGRAMS_TO_LIBRARIES / "zovkpopup").lexically_normal();
}

fs::path installedHelper() {
  fs::path path = libraryFolder() / "zovkpopup-helper";
  std::error_code error;
  if (!fs::is_regular_file(path, error)) {
    throw ToolError(path.string() + " is not installed", kUnavailable);
  }
  return path;
}

}  // namespace zovk::tool
