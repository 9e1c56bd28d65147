#pragma once

#include <functional>
#include <string>

#include "protocol/FrameCodec.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {

using Id = HelperId;

/// Sends one event to the game.
using EventSink = std::function<void(const HelperMessage&)>;

inline void sendLog(const EventSink& events, const std::string& line) {
  events({{member::kType, event::kLog}, {member::kLine, line}});
}

}  // namespace zovk::helper
