#include "zovkpopup/FolderTarget.h"

#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

namespace fs = std::filesystem;

void copyInOneStep(const fs::path& from, const fs::path& to) {
  const fs::path unfinished = to.string() + ".unfinished";
  fs::create_directories(to.parent_path());
  fs::copy_file(from, unfinished, fs::copy_options::overwrite_existing);
  fs::last_write_time(unfinished, fs::last_write_time(from));
  fs::rename(unfinished, to);
}

}  // namespace

void FolderTarget::put(const Release& release, const std::string& key) const {
  try {
    copyInOneStep(release.folder / key, site_ / key);
  } catch (const fs::filesystem_error& error) {
    throw ToolError(error.what(), kInputOutput);
  }
}

void FolderTarget::upload(const Release& release) {
  for (const char* below : {"pages", "releases"}) {
    for (const std::string& key : filesOf(release, below)) put(release, key);
  }
}

void FolderTarget::activate(const Release& release) {
  const fs::path target = fs::path("releases") / release.id;
  std::error_code error;
  if (!fs::is_directory(site_ / target, error)) {
    throw ToolError((site_ / target).string() + ": the release is no longer there", kNoInput);
  }
  const fs::path next = site_ / "current.unfinished";
  fs::remove(next, error);
  fs::create_symlink(target, next, error);
  if (!error) fs::rename(next, site_ / "current", error);
  if (error) throw ToolError((site_ / "current").string() + ": " + error.message(), kInputOutput);
}

}  // namespace zovk::tool
