#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "logging/LogFormat.h"

namespace zovk {

/// The destination of log lines and the source of the debug switch. Set it once, before the first
/// line. Any thread may call the functions. An empty function means that the platform lacks that
/// source.
struct LogEnvironment {
  /// Writes one line to the platform log, which adds its own time and process prefix.
  std::function<void(std::string_view line)> writeLine;
  /// Returns whether the host ships the setting bundle "ZOVKAppSetting".
  std::function<bool()> hasSettingBundle;
  /// Returns the text of "ZOVKConfig.ini" in the setting bundle, or nothing if it cannot be read.
  std::function<std::optional<std::string>()> readSettingFile;
  /// Returns the boolean value of a key of the host's info dictionary; false for a missing key.
  std::function<bool(std::string_view key)> infoFlag;
};

/// The only way to the platform log. Debug lines are written only if the host's packaging turns the
/// debug switch on, error lines always. Any thread; lines are written on the calling thread.
class ZPLogger {
 public:
  /// Replaces the environment. Once the debug switch is decided, it stays.
  static void setEnvironment(LogEnvironment environment);

  /// Reads the debug switch from the host's packaging. The first debug line calls it automatically.
  static void getSetting();
  static bool isEnableDebug();

  /// Writes the debug line "[Debug]fileName function line message". With the switch off it formats
  /// nothing. Ignores `level`. `fileName` and `function` must not be null.
  template <class... Values>
  static void ZPLog(int /*level*/, const char* fileName, const char* function, int line,
                    const char* format, const Values&... values) {
    if (!debugDecided()) return;
    LogValues store;
    (addLogValue(store, values), ...);
    writeDebugLine(fileName, function, line, format, store);
  }

  /// Writes the error line "[Error] message", whatever the switch. Ignores `level`. If the first
  /// values are a literal, an int and a literal, the call looks like a debug line and is taken for
  /// one; `logError` avoids that.
  template <class... Values>
  static void ZPLog(int /*level*/, const char* format, const Values&... values) {
    LogValues store;
    (addLogValue(store, values), ...);
    writeErrorLine(format, store);
  }

  /// Writes a line to the platform log unchanged, whatever level and switch.
  static void writeDirectly(std::string_view line);

 private:
  template <class... Values>
  friend void logError(const char* format, const Values&... values);
  // Returns true if debug lines are written; the first call of the process decides the switch.
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

/// A format and its line in the source.
struct LogFormatHere {
  // NOLINTNEXTLINE(google-explicit-constructor): call sites read like a plain format.
  LogFormatHere(const char* text, int lineOfCaller = __builtin_LINE())
      : format(text), line(lineOfCaller) {}
  const char* format;
  int line;
};

/// Writes the debug lines of one operation: `fileName` is its class, `function` its full name.
struct DebugLog {
  const char* fileName;
  const char* function;

  template <class... Values>
  void operator()(LogFormatHere here, const Values&... values) const {
    ZPLogger::ZPLog(0, fileName, function, here.line, here.format, values...);
  }
};

/// Writes an error line.
template <class... Values>
void logError(const char* format, const Values&... values) {
  LogValues store;
  (addLogValue(store, values), ...);
  ZPLogger::writeErrorLine(format, store);
}

}  // namespace zovk
