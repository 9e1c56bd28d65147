#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>

namespace zovk::helper {

/// The steps of game pads, one after another. Each step starts from the place that the step before
/// has reached, which the page reports only after a while.
class PadQueue {
 public:
  using Done = std::function<void()>;
  using Step = std::function<void(const Done& done)>;
  /// Further steps behind a page that does not answer are dropped.
  static constexpr std::size_t kMostWaiting = 8;

  /// Runs the step once those before it have called their `done`.
  void add(Step step);

 private:
  struct State {
    std::deque<Step> waiting;
    bool busy = false;
  };
  static void runNext(const std::shared_ptr<State>& state);

  std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace zovk::helper
