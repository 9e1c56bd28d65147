#include "engine/OnceRecord.h"

#include <unordered_set>

namespace zovk {

std::string prunedOnceRecord(std::string_view record, const PopupList& remote,
                             const PopupList& local) {
  std::unordered_set<std::string_view> live;
  for (const PopupPointer& popup : remote) {
    if (popup->isPageFile()) live.insert(popup->sig);
  }
  for (const PopupPointer& popup : local) live.insert(popup->sig);
  std::string kept;
  while (true) {
    const std::size_t end = record.find(',');
    const std::string_view key = record.substr(0, end);
    if (!key.empty() && live.contains(key)) kept.append(key).append(",");
    if (end == std::string_view::npos) return kept;
    record.remove_prefix(end + 1);
  }
}

std::string cacheKeepList(const PopupList& remote) {
  std::string keepList;
  for (const PopupPointer& popup : remote) {
    if (popup->isPageFile()) keepList.append(popup->getPopupFileName()).append(",");
  }
  return keepList.append(kRemoteDocumentFile).append(",").append(kOnceRecordFile);
}

}  // namespace zovk
