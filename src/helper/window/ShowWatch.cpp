#include "helper/window/ShowWatch.h"

#include <utility>

namespace zovk::helper {
namespace {

constexpr guint kMilliseconds = 500;
constexpr int kLooksWhileSlow = 6;
constexpr int kLooksWhileElsewhere = 2;

}  // namespace

ShowWatch::ShowWatch(Duty duty) : duty_(std::move(duty)) {}

void ShowWatch::begin() {
  looks_ = 0;
  asked_ = false;
  lookAgain();
}

void ShowWatch::lookAgain() {
  timer_ = SourceGuard(g_timeout_add(kMilliseconds, onDeadline, this));
}

void ShowWatch::notice() {
  if (active() && duty_.look() == State::kUp) end();
}

void ShowWatch::end() {
  timer_ = SourceGuard();
}

gboolean ShowWatch::onDeadline(gpointer self) {
  auto* watch = static_cast<ShowWatch*>(self);
  watch->timer_.forget();
  // Events that the display has sent meanwhile are handled first.
  watch->timer_ = SourceGuard(g_idle_add_full(G_PRIORITY_LOW, onIdle, watch, nullptr));
  return G_SOURCE_REMOVE;
}

gboolean ShowWatch::onIdle(gpointer self) {
  auto* watch = static_cast<ShowWatch*>(self);
  watch->timer_.forget();
  watch->decide();
  return G_SOURCE_REMOVE;
}

void ShowWatch::decide() {
  const State state = duty_.look();
  if (state == State::kUp) return;
  if (state == State::kSlow && ++looks_ < kLooksWhileSlow) return lookAgain();
  if (state == State::kElsewhere && ++looks_ < kLooksWhileElsewhere) return lookAgain();
  if (state == State::kWithoutKeyboard && !std::exchange(asked_, true)) {
    lookAgain();
    return duty_.askForKeyboard();
  }
  duty_.stuck(state);
}

}  // namespace zovk::helper
