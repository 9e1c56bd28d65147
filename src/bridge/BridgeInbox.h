#pragma once

#include <deque>

#include "bridge/ReceivedQueue.h"
#include "support/LineLimit.h"

namespace zovk {

/// The messages that came from a bridge's page.
struct BridgeInbox {
  /// Long queues, and the queues behind them. Main thread only.
  std::deque<ReceivedQueue> queues;
  /// Log lines about the page's mistakes.
  LineLimit mistakes;
};

}  // namespace zovk
