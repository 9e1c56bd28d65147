#include "support/LineLimit.h"

#include <chrono>
#include <utility>

namespace zovk {
namespace {

constexpr double kSeconds = 1;

std::string withCount(std::string text, std::size_t others) {
  if (others > 0) text += " (" + std::to_string(others) + " more such lines held back)";
  return text;
}

}  // namespace

std::optional<std::string> LineLimit::line(std::string text, std::size_t count) {
  const double now = clock_();
  const LockGuard lock(mutex_);
  if (!secondBegan_ || now - *secondBegan_ >= kSeconds) {
    secondBegan_ = now;
    left_ = perSecond_;
  }
  if (left_ == 0) {
    last_ = std::move(text);
    held_ += count;
    return std::nullopt;
  }
  --left_;
  last_.clear();
  return withCount(std::move(text), std::exchange(held_, 0) + count - 1);
}

std::optional<std::string> LineLimit::rest() {
  const double now = clock_();
  const LockGuard lock(mutex_);
  if (held_ == 0) return std::nullopt;
  secondBegan_ = now;
  left_ = perSecond_ - 1;
  return withCount(std::exchange(last_, {}), std::exchange(held_, 0) - 1);
}

double LineLimit::steadySeconds() {
  using Seconds = std::chrono::duration<double>;
  return Seconds(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace zovk
