#pragma once

#include <chrono>
#include <string>

namespace lanterns {

/// Keeps the loop at 60 frames a second and remembers how well that went.
class FramePacer {
 public:
  using Clock = std::chrono::steady_clock;

  /// Waits until the next frame is due; returns the seconds since the last one.
  double nextFrame();
  /// Reports how long the popups' share of a frame took.
  void notePump(Clock::duration duration);
  std::string summary() const;

 private:
  Clock::time_point last_ = Clock::now();
  Clock::time_point due_ = last_;
  long frames_ = 0;
  double total_ = 0;
  Clock::duration longestPump_{};
};

}  // namespace lanterns
