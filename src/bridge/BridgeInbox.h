#pragma once

#include <deque>
#include <string>

#include <boost/json/value.hpp>

#include "bridge/ReceivedQueue.h"
#include "support/LineLimit.h"
#include "zovkpopup/platform/Clock.h"

namespace zovk {

/// The messages that came from a bridge's page, and the log of the page's mistakes. The clock must
/// outlive it.
class BridgeInbox {
 public:
  explicit BridgeInbox(const Clock& clock);

  /// Returns whether a queue of that size may be read. The queues that wait are bounded, too.
  bool mayTake(std::size_t size) const;
  /// Writes a log line with the beginning of the wrong value. A page can make any number of
  /// mistakes; a few each second are written.
  void logMistake(const std::string& what, const boost::json::value& value);
  /// Writes the count of the mistakes that were not written.
  void logHeldMistakes();

  /// A long queue, and the queues behind it. Main thread only.
  std::deque<ReceivedQueue> queues;

 private:
  LineLimit mistakes_;
};

}  // namespace zovk
