#include "service/console/ReportFeed.h"

namespace zovk::service {

ReportFeed::Listener::~Listener() {
  const std::lock_guard lock(feed_.mutex_);
  feed_.listeners_.erase(this);
}

std::optional<std::string> ReportFeed::Listener::next(std::chrono::milliseconds time) {
  std::unique_lock lock(feed_.mutex_);
  feed_.changed_.wait_for(lock, time, [this] { return feed_.closed_ || !lines_.empty(); });
  if (lines_.empty()) return std::nullopt;
  std::string line = std::move(lines_.front());
  lines_.pop_front();
  return line;
}

std::shared_ptr<ReportFeed::Listener> ReportFeed::listen() {
  const std::lock_guard lock(mutex_);
  if (closed_ || listeners_.size() >= kMostListeners) return nullptr;
  auto listener = std::make_shared<Listener>(*this);
  listeners_.insert(listener.get());
  return listener;
}

void ReportFeed::publish(const std::string& line) {
  {
    const std::lock_guard lock(mutex_);
    for (Listener* const listener : listeners_) {
      if (listener->lines_.size() == kMostWaiting) listener->lines_.pop_front();
      listener->lines_.push_back(line);
    }
  }
  changed_.notify_all();
}

void ReportFeed::close() {
  {
    const std::lock_guard lock(mutex_);
    closed_ = true;
  }
  changed_.notify_all();
}

bool ReportFeed::closed() const {
  const std::lock_guard lock(mutex_);
  return closed_;
}

}  // namespace zovk::service
