#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include <sys/types.h>

namespace zovk {

/// Reads one pixel of the X screen about a thousand times a second, on a separate thread and
/// connection. It shows what the player sees, whoever drew it.
class PixelWatch {
 public:
  using Clock = std::chrono::steady_clock;

  /// Ends the program if there is no X screen.
  PixelWatch(int x, int y);
  ~PixelWatch();
  PixelWatch(const PixelWatch&) = delete;
  PixelWatch& operator=(const PixelWatch&) = delete;

  /// Watches from now on until the pixel has that colour, 0xRRGGBB.
  void expect(unsigned long colour);
  /// Returns when the pixel first had the colour, or nothing until then.
  std::optional<Clock::time_point> seen() const;
  /// Writes down from now on which colours the pixel takes.
  void follow();
  /// Returns them in order, the first one included, and stops writing.
  std::vector<unsigned long> followed();
  /// Returns the pixel's present colour.
  unsigned long colour() const;
  /// Returns the processor time that the thread has taken so far.
  double processorSeconds() const;
  /// Returns the X server's process.
  pid_t screenProcess() const;

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
  bool following_ = false;
  std::vector<unsigned long> followed_;
  bool over_ = false;
  mutable std::thread thread_;  // only a changeable one has a handle
};

}  // namespace zovk
