#include "engine/Merge.h"

#include <cstdint>
#include <string_view>
#include <unordered_map>

namespace zovk {
namespace {

// Finds, scene by scene, the first local popup that has no partner yet.
class Partners {
 public:
  explicit Partners(const PopupList& local) : next_(local.size(), kNone), taken_(local.size()) {
    first_.reserve(local.size());
    for (std::size_t i = local.size(); i-- > 0;) {
      auto& first = first_.try_emplace(local[i]->scene, kNone).first->second;
      next_[i] = first;
      first = i;
    }
  }

  static constexpr std::size_t kNone = SIZE_MAX;

  std::size_t take(std::string_view scene) {
    const auto found = first_.find(scene);
    if (found == first_.end() || found->second == kNone) return kNone;
    const std::size_t index = found->second;
    found->second = next_[index];
    taken_[index] = true;
    return index;
  }
  bool isTaken(std::size_t index) const { return taken_[index]; }

 private:
  std::unordered_map<std::string_view, std::size_t> first_;
  std::vector<std::size_t> next_;
  std::vector<bool> taken_;
};

}  // namespace

PopupList mergePopups(const PopupList& remote, const PopupList& local,
                      const MergePairSink& paired) {
  if (remote.empty()) return local;
  if (local.empty()) return remote;
  Partners partners(local);
  PopupList result;
  PopupList winners;
  result.reserve(remote.size() + local.size());
  for (const PopupPointer& r : remote) {
    const std::size_t index = partners.take(r->scene);
    if (index == Partners::kNone) {
      result.push_back(r);
      continue;
    }
    const PopupPointer& l = local[index];
    paired(*r, *l);
    winners.push_back(r->publish_time < l->publish_time ? l : r);
  }
  for (std::size_t i = 0; i < local.size(); ++i) {
    if (!partners.isTaken(i)) result.push_back(local[i]);
  }
  result.insert(result.end(), winners.begin(), winners.end());
  return result;
}

}  // namespace zovk
