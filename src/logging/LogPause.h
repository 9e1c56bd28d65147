#pragma once

namespace zovk {

/// Keeps the calling thread from writing log lines while the object lives. For questions about the
/// popups that must not look like the game's own requests in its log. May be nested. Make and
/// destroy it on one thread.
class LogPause {
 public:
  LogPause();
  ~LogPause();
  LogPause(const LogPause&) = delete;
  LogPause& operator=(const LogPause&) = delete;

  static bool isOnForThisThread();
};

}  // namespace zovk
