#include "service/console/Refusals.h"

#include <ctime>

#include "support/Utf8.h"
#include "text/JsonRead.h"

namespace zovk::service {
namespace {

void shorten(boost::json::object& refusal) {
  for (auto& member : refusal) {
    auto* const text = member.value().if_string();
    if (text == nullptr || text->size() <= Refusals::kLongestText) continue;
    const std::size_t length = text->size();
    const std::string start(text->data(), Refusals::kLongestText);
    *text = repairedUtf8(start) + " (… " + std::to_string(length) + " bytes)";
  }
}

}  // namespace

void Refusals::add(const std::string& path, const Answer& answer) {
  boost::json::error_code error;
  const boost::json::value told = readJson(repairedUtf8(answer.body), error);
  if (error || !told.is_object()) return;
  boost::json::object refusal = told.get_object();
  refusal["path"] = repairedUtf8(path);
  refusal["time"] = std::time(nullptr);
  shorten(refusal);
  const LockGuard lock(mutex_);
  latest_.push_front(std::move(refusal));
  if (latest_.size() > kMost) latest_.pop_back();
}

boost::json::array Refusals::list() const {
  const LockGuard lock(mutex_);
  return boost::json::array(latest_.begin(), latest_.end());
}

}  // namespace zovk::service
