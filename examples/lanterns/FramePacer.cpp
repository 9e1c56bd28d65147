#include "FramePacer.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <thread>

namespace lanterns {
namespace {

constexpr std::chrono::nanoseconds kFrame(1'000'000'000 / 60);
constexpr double kLongestStep = 0.1;  // seconds; a stopped game goes on where it was

}  // namespace

double FramePacer::nextFrame() {
  due_ = std::max(due_ + kFrame, Clock::now() - kFrame);
  std::this_thread::sleep_until(due_);
  const auto now = Clock::now();
  const double seconds = std::chrono::duration<double>(now - last_).count();
  last_ = now;
  ++frames_;
  total_ += seconds;
  return std::min(seconds, kLongestStep);
}

void FramePacer::notePump(Clock::duration duration) {
  longestPump_ = std::max(longestPump_, duration);
}

std::string FramePacer::summary() const {
  const double pump = std::chrono::duration<double, std::milli>(longestPump_).count();
  std::array<char, 120> text{};
  std::snprintf(text.data(), text.size(),
                "%ld frames at %.1f a second; the popups' longest share of one was %.2f ms",
                frames_, total_ > 0 ? static_cast<double>(frames_) / total_ : 0.0, pump);
  return text.data();
}

}  // namespace lanterns
