#include "storage/ContainedNames.h"
#include "storage/StorageLog.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {

void ZOVKPopupFileManager::deleteInternalFileWithout(const std::optional<std::string>& keepList) {
  constexpr DebugLog debug = fileManagerLog("ZOVKPopupFileManager::deleteInternalFileWithout");
  debug("Delete internal file without:%@", keepList);
  const auto entries =
      platform_->files.listRecursively(filePath_).value_or(std::vector<std::string>());
  const auto kept = containedNames(entries, keepList.value_or(""));
  for (const std::string& entry : entries) {
    if (keepList && kept.contains(entry)) continue;
    debug("Delete file:%@", entry);
    const auto error = platform_->files.remove(filePath_ + "/" + entry);
    debug("Delete file:%@ result:%d", entry, !error);
  }
  debug("Delete internal file done");
}

}  // namespace zovk
