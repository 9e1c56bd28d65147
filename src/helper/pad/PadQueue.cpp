#include "helper/pad/PadQueue.h"

#include <utility>

namespace zovk::helper {

void PadQueue::add(Step step) {
  if (state_->waiting.size() >= kMostWaiting) return;
  state_->waiting.push_back(std::move(step));
  if (!state_->busy) runNext(state_);
}

void PadQueue::runNext(const std::shared_ptr<State>& state) {
  state->busy = !state->waiting.empty();
  if (!state->busy) return;
  const Step step = std::move(state->waiting.front());
  state->waiting.pop_front();
  // The queue may be gone by the time that the page answers.
  step([weak = std::weak_ptr<State>(state)] {
    if (const auto kept = weak.lock()) runNext(kept);
  });
}

}  // namespace zovk::helper
