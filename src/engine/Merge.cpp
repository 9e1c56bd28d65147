#include "engine/Merge.h"

#include <bit>
#include <cstdint>
#include <functional>
#include <iterator>
#include <string_view>
#include <vector>

namespace zovk {
namespace {

constexpr std::uint32_t kNone = UINT32_MAX;

std::vector<std::uint32_t> sceneHashes(const PopupList& popups) {
  std::vector<std::uint32_t> hashes;
  hashes.reserve(popups.size());
  for (const PopupPointer& popup : popups) {
    hashes.push_back(static_cast<std::uint32_t>(std::hash<std::string_view>()(popup->scene)));
  }
  return hashes;
}

// Finds, scene by scene, the first local popup that has no partner yet. Chains of indices rather
// than a map of nodes: long lists would spend most of their time on the nodes.
class Partners {
 public:
  explicit Partners(const PopupList& local)
      : local_(local),
        hashes_(sceneHashes(local)),
        heads_(std::bit_ceil(2 * local.size()), kNone),
        next_(local.size()),
        taken_(local.size()) {
    for (auto i = static_cast<std::uint32_t>(local.size()); i-- > 0;) {
      if (i >= kAhead) __builtin_prefetch(&heads_[bucket(hashes_[i - kAhead])]);
      std::uint32_t& head = heads_[bucket(hashes_[i])];
      next_[i] = head;
      head = i;
    }
  }

  // Tells of a scene that will be asked for soon.
  void announce(std::uint32_t hash) const { __builtin_prefetch(&heads_[bucket(hash)]); }

  // Returns the partner, which is then taken; `kNone` if there is none.
  std::uint32_t take(const std::string& scene, std::uint32_t hash) {
    std::uint32_t* link = &heads_[bucket(hash)];
    while (*link != kNone) {
      const std::uint32_t i = *link;
      if (hashes_[i] == hash && local_[i]->scene == scene) {
        *link = next_[i];
        taken_[i] = true;
        return i;
      }
      link = &next_[i];
    }
    return kNone;
  }
  bool isTaken(std::size_t index) const { return taken_[index]; }

  static constexpr std::size_t kAhead = 8;

 private:
  std::size_t bucket(std::uint32_t hash) const { return hash & (heads_.size() - 1); }

  const PopupList& local_;
  std::vector<std::uint32_t> hashes_;
  std::vector<std::uint32_t> heads_;
  std::vector<std::uint32_t> next_;
  std::vector<bool> taken_;
};

}  // namespace

PopupList mergePopups(const PopupListPointer& remote, const PopupListPointer& local,
                      const MergePairSink& paired) {
  if (remote->empty()) return *local;
  if (local->empty()) return *remote;
  // The merged list keeps the two lists alive, not record by record: counting references in every
  // record would read long lists from memory once more.
  const auto kept = [](const PopupListPointer& list, const PopupPointer& popup) {
    return PopupPointer(list, popup.get());
  };
  Partners partners(*local);
  PopupList result;
  PopupList winners;
  result.reserve(remote->size() + local->size());
  const std::vector<std::uint32_t> hashes = sceneHashes(*remote);
  for (std::size_t k = 0; k < remote->size(); ++k) {
    const PopupPointer& r = (*remote)[k];
    if (k + Partners::kAhead < hashes.size()) partners.announce(hashes[k + Partners::kAhead]);
    const std::uint32_t index = partners.take(r->scene, hashes[k]);
    if (index == kNone) {
      result.push_back(kept(remote, r));
      continue;
    }
    const PopupPointer& l = (*local)[index];
    paired(*r, *l);
    winners.push_back(r->publish_time < l->publish_time ? kept(local, l) : kept(remote, r));
  }
  for (std::size_t i = 0; i < local->size(); ++i) {
    if (!partners.isTaken(i)) result.push_back(kept(local, (*local)[i]));
  }
  result.insert(result.end(), std::make_move_iterator(winners.begin()),
                std::make_move_iterator(winners.end()));
  return result;
}

}  // namespace zovk
