#include "storage/RecordText.h"

#include <algorithm>
#include <utility>

namespace zovk {
namespace {

constexpr char kSeparator = ',';

}  // namespace

RecordText::RecordText(std::string text) : text_(std::move(text)) {
  std::string_view rest = text_;
  while (true) {
    const std::size_t end = rest.find(kSeparator);
    const std::string_view key = rest.substr(0, end);
    keys_.insert(key);
    longestKey_ = std::max(longestKey_, key.size());
    if (end == std::string_view::npos) return;
    rest.remove_prefix(end + 1);
  }
}

bool RecordText::contains(std::string_view part) const {
  if (keys_.contains(part)) return true;
  // What has no separator stands within one key, and what is as long as the longest is that key.
  const bool isWithinAKey = part.find(kSeparator) == std::string_view::npos;
  if (isWithinAKey && part.size() >= longestKey_) return false;
  return text_.find(part) != std::string::npos;
}

}  // namespace zovk
