#include "storage/TextCache.h"

#include <utility>

#include "storage/FreshnessRule.h"
#include "support/Utf8.h"

namespace zovk {

std::shared_ptr<const RecordText> TextCache::text(const std::string& path, FileGlance& glance) {
  const auto before = glance.identity(path);
  if (!before) return nullptr;
  {
    const LockGuard lock(mutex_);
    if (last_.path == path && last_.identity == *before) return last_.text;
  }
  const bool settled = identityIsSettled(*before, clock_);
  auto bytes = files_.read(path);
  if (!bytes) return nullptr;  // perhaps only this once: not remembered
  std::shared_ptr<const RecordText> result;
  if (isUtf8(*bytes)) result = std::make_shared<const RecordText>(std::move(*bytes));
  if (settled && files_.identity(path) == before) {
    const LockGuard lock(mutex_);
    last_ = {path, *before, result};
  }
  return result;
}

}  // namespace zovk
