#pragma once

#include <string>

#include "support/LineLimit.h"
#include "webhost/Events.h"
#include "webhost/GObjectPtr.h"

namespace zovk {

/// Lines that pages can cause as often as they like: at most one a second reaches the game, with
/// the number of the others. Main thread only.
class PageLog {
 public:
  explicit PageLog(EventSink events, LineLimit::Clock clock = LineLimit::steadySeconds);
  /// Says how many were held back.
  ~PageLog();
  PageLog(const PageLog&) = delete;
  PageLog& operator=(const PageLog&) = delete;

  void write(const std::string& line);

 private:
  static gboolean onSecondOver(gpointer self);
  void writeRest();

  EventSink events_;
  LineLimit limit_;
  SourceGuard secondOver_;
};

}  // namespace zovk
