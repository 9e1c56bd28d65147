#include "service/console/Previews.h"

#include "service/console/Random.h"

namespace zovk::service {

std::string Previews::add(std::string bytes) {
  std::string name = unguessable();
  const LockGuard lock(mutex_);
  latest_.push_front({name, std::move(bytes)});
  if (latest_.size() > kMost) latest_.pop_back();
  return name;
}

std::optional<std::string> Previews::page(const std::string& name) const {
  const LockGuard lock(mutex_);
  for (const Preview& preview : latest_) {
    if (preview.name == name) return preview.bytes;
  }
  return std::nullopt;
}

}  // namespace zovk::service
