#include "storage/RecordText.h"

#include <algorithm>
#include <utility>

#include "storage/CommaList.h"

namespace zovk {

RecordText::RecordText(std::string text)
    : text_(std::move(text)), keys_(itemsBetweenCommas(text_)) {
  for (const std::string_view key : keys_) longestKey_ = std::max(longestKey_, key.size());
}

bool RecordText::contains(std::string_view part) const {
  if (keys_.contains(part)) return true;
  // A part without a separator is within one key, and a part as long as the longest key is that
  // key.
  const bool isWithinAKey = part.find(',') == std::string_view::npos;
  if (isWithinAKey && part.size() >= longestKey_) return false;
  return text_.find(part) != std::string::npos;
}

}  // namespace zovk
