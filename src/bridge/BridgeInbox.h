#pragma once

#include <deque>

#include "bridge/ReceivedQueue.h"
#include "support/LineLimit.h"

namespace zovk {

/// What has come from a bridge's page.
struct BridgeInbox {
  /// Long queues, and those behind them. Main thread only.
  std::deque<ReceivedQueue> queues;
  /// Lines about what the page sent amiss.
  LineLimit mistakes;
};

}  // namespace zovk
