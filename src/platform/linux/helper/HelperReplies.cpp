#include "platform/linux/helper/HelperReplies.h"

#include <utility>

namespace zovk {

void HelperReplies::expect(HelperId id, std::string_view event, HelperId about, Reply reply) {
  waiting_.insert_or_assign(id, Waiting{std::string(event), about, std::move(reply)});
}

HelperReplies::Reply HelperReplies::take(HelperId id, std::string_view event) {
  const auto found = waiting_.find(id);
  if (found == waiting_.end() || found->second.event != event) return nullptr;
  Reply reply = std::move(found->second.reply);
  waiting_.erase(found);
  return reply;
}

std::vector<HelperReplies::Reply> HelperReplies::takeAbout(HelperId object) {
  std::vector<Reply> replies;
  for (auto place = waiting_.begin(); place != waiting_.end();) {
    if (place->second.about != object) {
      ++place;
      continue;
    }
    replies.push_back(std::move(place->second.reply));
    place = waiting_.erase(place);
  }
  return replies;
}

std::vector<HelperReplies::Reply> HelperReplies::takeAll() {
  std::vector<Reply> replies;
  for (auto& [id, waiting] : std::exchange(waiting_, {})) {
    replies.push_back(std::move(waiting.reply));
  }
  return replies;
}

}  // namespace zovk
