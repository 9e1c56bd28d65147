#include "helper/page/PageLog.h"

#include <utility>

namespace zovk::helper {

PageLog::PageLog(EventSink events, LineLimit::Clock clock)
    : events_(std::move(events)), limit_(std::move(clock)) {}

PageLog::~PageLog() {
  writeRest();
}

void PageLog::write(const std::string& line, std::size_t count) {
  if (const auto text = limit_.line(line, count)) return sendLog(events_, *text);
  if (!secondOver_.active()) secondOver_ = SourceGuard(g_timeout_add(1000, onSecondOver, this));
}

gboolean PageLog::onSecondOver(gpointer self) {
  auto* log = static_cast<PageLog*>(self);
  log->secondOver_.forget();
  log->writeRest();
  return G_SOURCE_REMOVE;
}

void PageLog::writeRest() {
  if (const auto text = limit_.rest()) sendLog(events_, *text);
}

}  // namespace zovk::helper
