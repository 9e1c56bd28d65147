#include "e2e/remote/LogBook.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace zovk {
namespace {

constexpr std::string_view kErrorLevel = "[Error] ";

}  // namespace

void LogBook::add(std::string_view line) {
  std::function<void()> action;
  {
    const std::lock_guard lock(mutex_);
    lines_.emplace_back(line);
    if (action_ && line.ends_with(awaited_)) action = std::exchange(action_, nullptr);
  }
  changed_.notify_all();
  if (action) action();
}

void LogBook::clear() {
  const std::lock_guard lock(mutex_);
  lines_.clear();
}

std::vector<std::string> LogBook::lines() const {
  const std::lock_guard lock(mutex_);
  return lines_;
}

std::vector<std::string> LogBook::errors() const {
  std::vector<std::string> found;
  for (const std::string& line : lines()) {
    if (line.starts_with(kErrorLevel)) found.push_back(line.substr(kErrorLevel.size()));
  }
  return found;
}

bool LogBook::waitFor(std::string_view message, std::size_t times) const {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, std::chrono::minutes(1),
                           [&] { return countLocked(message) >= times; });
}

void LogBook::onLine(std::string message, std::function<void()> action) {
  const std::lock_guard lock(mutex_);
  awaited_ = std::move(message);
  action_ = std::move(action);
}

std::size_t LogBook::count(std::string_view message) const {
  const std::lock_guard lock(mutex_);
  return countLocked(message);
}

std::size_t LogBook::countLocked(std::string_view message) const {
  const std::string end(message);
  return static_cast<std::size_t>(std::count_if(
      lines_.begin(), lines_.end(), [&](const std::string& line) { return line.ends_with(end); }));
}

}  // namespace zovk
