#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "protocol/FrameCodec.h"

namespace zovk::helper {

/// The game's number of a window, a view, a layout or a request.
using Id = std::int64_t;

/// Sends one event to the game.
using EventSink = std::function<void(const HelperMessage&)>;

inline void sendLog(const EventSink& events, const std::string& line) {
  events({{"type", "log"}, {"line", line}});
}

}  // namespace zovk::helper
