#pragma once

namespace zovk {

/// Keeps the calling thread from writing log lines while the object lives. For questions about the
/// popups that must not look, in the game's log, like the game's own doings. Nests; made and
/// destroyed on one thread.
class LogPause {
 public:
  LogPause();
  ~LogPause();
  LogPause(const LogPause&) = delete;
  LogPause& operator=(const LogPause&) = delete;

  static bool isOnForThisThread();
};

}  // namespace zovk
