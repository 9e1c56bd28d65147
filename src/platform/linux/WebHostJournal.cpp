#include "platform/linux/WebHostJournal.h"

namespace zovk {

void WebHostJournal::remember(WebHostId object, WebHostAspect aspect,
                              const WebHostMessage& command) {
  forget(object, aspect);
  places_[{object, aspect}] = ++last_;
  order_.try_emplace(last_, Key{object, aspect}, command);
}

void WebHostJournal::forget(WebHostId object, WebHostAspect aspect) {
  const auto found = places_.find({object, aspect});
  if (found == places_.end()) return;
  order_.erase(found->second);
  places_.erase(found);
}

void WebHostJournal::forget(WebHostId object) {
  const auto first = places_.lower_bound({object, WebHostAspect::kExistence});
  const auto last = places_.upper_bound({object, WebHostAspect::kShown});
  for (auto place = first; place != last; ++place) order_.erase(place->second);
  places_.erase(first, last);
}

std::vector<WebHostMessage> WebHostJournal::commands() const {
  std::vector<WebHostMessage> all;
  all.reserve(order_.size());
  for (const bool shown : {false, true}) {
    for (const auto& [place, entry] : order_) {
      if ((entry.first.second == WebHostAspect::kShown) == shown) all.push_back(entry.second);
    }
  }
  return all;
}

}  // namespace zovk
