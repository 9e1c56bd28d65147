#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>

namespace zovk {

/// Looks at one pixel of the X screen about a thousand times a second, on a thread and a connection
/// of its own: what is found there is what the player sees, whoever drew it.
class PixelWatch {
 public:
  using Clock = std::chrono::steady_clock;

  /// Ends the program when there is no X screen.
  PixelWatch(int x, int y);
  ~PixelWatch();
  PixelWatch(const PixelWatch&) = delete;
  PixelWatch& operator=(const PixelWatch&) = delete;

  /// Looks from now on until the pixel has that colour, 0xRRGGBB.
  void expect(unsigned long colour);
  /// When the pixel had the colour; absent as long as it has not.
  std::optional<Clock::time_point> seen() const;
  /// What the pixel shows now.
  unsigned long colour() const;

 private:
  void look();
  static unsigned long read(void* display, int x, int y);

  const int x_;
  const int y_;
  void* const own_;  // the connection of `colour`
  mutable std::mutex mutex_;
  std::condition_variable changed_;
  std::optional<unsigned long> wanted_;
  std::optional<Clock::time_point> seen_;
  bool over_ = false;
  std::thread thread_;
};

}  // namespace zovk
