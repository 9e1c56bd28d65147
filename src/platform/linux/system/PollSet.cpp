#include "platform/linux/system/PollSet.h"

#include <cerrno>
#include <system_error>
#include <utility>

#include <sys/epoll.h>

namespace zovk {

PollSet::PollSet() : epoll_(::epoll_create1(EPOLL_CLOEXEC)) {
  if (!epoll_) throw std::system_error(errno, std::generic_category(), "epoll_create1");
}

void PollSet::add(int fd, Callback callback) {
  remove(fd);
  const std::uint64_t id = ++lastId_;
  epoll_event event{};
  event.events = EPOLLIN | EPOLLRDHUP;
  event.data.u64 = id;
  if (::epoll_ctl(epoll_.get(), EPOLL_CTL_ADD, fd, &event) != 0) {
    throw std::system_error(errno, std::generic_category(), "epoll_ctl");
  }
  sources_.insert_or_assign(fd, Source{id, std::make_shared<const Callback>(std::move(callback))});
}

void PollSet::remove(int fd) {
  if (sources_.erase(fd) > 0) ::epoll_ctl(epoll_.get(), EPOLL_CTL_DEL, fd, nullptr);
}

void PollSet::clear() {
  while (!sources_.empty()) remove(sources_.begin()->first);
}

bool PollSet::dispatchOne() {
  // Asking for one event at a time lets the kernel go round the ready descriptors.
  epoll_event event{};
  if (::epoll_wait(epoll_.get(), &event, 1, 0) != 1) return false;
  if (const auto callback = callbackOf(event.data.u64)) (*callback)();
  return true;
}

std::shared_ptr<const PollSet::Callback> PollSet::callbackOf(std::uint64_t id) const {
  for (const auto& [fd, source] : sources_) {
    if (source.id == id) return source.callback;
  }
  return nullptr;
}

}  // namespace zovk
