#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "protocol/FrameCodec.h"

namespace zovk::helper {

/// What the game calls a window, a view, a layout, a request.
using Id = std::int64_t;

/// Sends one event to the game.
using EventSink = std::function<void(const HelperMessage&)>;

inline void sendLog(const EventSink& events, const std::string& line) {
  events({{"type", "log"}, {"line", line}});
}

}  // namespace zovk::helper
