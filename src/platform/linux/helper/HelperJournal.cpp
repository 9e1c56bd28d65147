#include "platform/linux/helper/HelperJournal.h"

namespace zovk {

void HelperJournal::remember(HelperId object, HelperAspect aspect, const HelperMessage& command) {
  forget(object, aspect);
  places_[{object, aspect}] = ++last_;
  order_.try_emplace(last_, Key{object, aspect}, command);
}

void HelperJournal::forget(HelperId object, HelperAspect aspect) {
  const auto found = places_.find({object, aspect});
  if (found == places_.end()) return;
  order_.erase(found->second);
  places_.erase(found);
}

void HelperJournal::forget(HelperId object) {
  const auto first = places_.lower_bound({object, HelperAspect::kExistence});
  const auto last = places_.upper_bound({object, HelperAspect::kShown});
  for (auto place = first; place != last; ++place) order_.erase(place->second);
  places_.erase(first, last);
}

std::vector<HelperMessage> HelperJournal::commands() const {
  std::vector<HelperMessage> all;
  all.reserve(order_.size());
  for (const bool shown : {false, true}) {
    for (const auto& [place, entry] : order_) {
      if ((entry.first.second == HelperAspect::kShown) == shown) all.push_back(entry.second);
    }
  }
  return all;
}

}  // namespace zovk
