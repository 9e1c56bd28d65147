#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "logging/LogFormat.h"

namespace zovk {

/// Where the logger's lines go and where its debug switch comes from. Handed in once, before the
/// first line; every function may be called from any thread. A function that is not set stands
/// for a platform without that source.
struct LogEnvironment {
  /// Writes one line to the platform log, which adds its own time and process prefix.
  std::function<void(std::string_view line)> writeLine;
  /// Whether the host ships the setting bundle "ZOVKAppSetting".
  std::function<bool()> hasSettingBundle;
  /// The text of "ZOVKConfig.ini" in the setting bundle; absent when it cannot be read.
  std::function<std::optional<std::string>()> readSettingFile;
  /// The boolean value of a key of the host's info dictionary; a missing key is false.
  std::function<bool(std::string_view key)> infoFlag;
};

/// The one way to the platform log. Debug lines are written only when the host's packaging turns
/// the debug switch on, error lines always. Any thread; lines are written on the calling thread.
class ZPLogger {
 public:
  /// Replaces the environment. The debug switch, once decided, is not decided anew.
  static void setEnvironment(LogEnvironment environment);

  /// Reads the debug switch from the host's packaging. Runs by itself on the first debug line.
  static void getSetting();
  static bool isEnableDebug();

  /// Debug line "[Debug]fileName function line message". With the switch off nothing is formatted.
  /// `level` is not looked at. Neither `fileName` nor `function` may be null.
  template <class... Values>
  static void ZPLog(int /*level*/, const char* fileName, const char* function, int line,
                    const char* format, const Values&... values) {
    if (!debugDecided()) return;
    LogValues store;
    (addLogValue(store, values), ...);
    writeDebugLine(fileName, function, line, format, store);
  }

  /// Error line "[Error] message", written whatever the switch says. `level` is not looked at.
  /// Where the first values are a literal, an int and a literal, the call reads like a debug line
  /// and is one; `logError` has no such doubt.
  template <class... Values>
  static void ZPLog(int /*level*/, const char* format, const Values&... values) {
    LogValues store;
    (addLogValue(store, values), ...);
    writeErrorLine(format, store);
  }

  /// A line that goes to the platform log as it stands, past level and switch.
  static void writeDirectly(std::string_view line);

 private:
  template <class... Values>
  friend void logError(const char* format, const Values&... values);
  // True when debug lines are to be written; decides the switch on the first call of the process.
  static bool debugDecided() {
    const Switch now = switch_.load(std::memory_order_acquire);
    if (now == Switch::kOff) [[likely]]
      return false;
    return now == Switch::kOn || decide();
  }
  static bool decide();
  static void writeDebugLine(const char* fileName, const char* function, int line,
                             std::string_view format, const LogValues& values);
  static void writeErrorLine(std::string_view format, const LogValues& values);

  enum class Switch { kUndecided, kOff, kOn };
  static std::atomic<Switch> switch_;
};

/// A format together with the line of the source on which it stands.
struct LogFormatHere {
  // NOLINTNEXTLINE(google-explicit-constructor): call sites read like a plain format.
  LogFormatHere(const char* text, int lineOfCaller = __builtin_LINE())
      : format(text), line(lineOfCaller) {}
  const char* format;
  int line;
};

/// The debug lines of one operation: `fileName` is its class, `function` its full name.
struct DebugLog {
  const char* fileName;
  const char* function;

  template <class... Values>
  void operator()(LogFormatHere here, const Values&... values) const {
    ZPLogger::ZPLog(0, fileName, function, here.line, here.format, values...);
  }
};

/// An error line.
template <class... Values>
void logError(const char* format, const Values&... values) {
  LogValues store;
  (addLogValue(store, values), ...);
  ZPLogger::writeErrorLine(format, store);
}

}  // namespace zovk
