#pragma once

#include <string>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"
#include "support/LineLimit.h"

namespace zovk::helper {

/// Writes lines that pages can cause as often as they like: at most one a second reaches the game,
/// with the number of the others. Main thread only.
class PageLog {
 public:
  explicit PageLog(EventSink events, LineLimit::Clock clock = LineLimit::steadySeconds);
  /// Writes how many were held back.
  ~PageLog();
  PageLog(const PageLog&) = delete;
  PageLog& operator=(const PageLog&) = delete;

  /// Writes a line that stands for `count` events, at least one.
  void write(const std::string& line, std::size_t count = 1);

 private:
  static gboolean onSecondOver(gpointer self);
  void writeRest();

  EventSink events_;
  LineLimit limit_;
  SourceGuard secondOver_;
};

}  // namespace zovk::helper
