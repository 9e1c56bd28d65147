#pragma once

#include <string>

#include "script/JscPtr.h"

namespace zovk {

/// A script engine with the little of a page that the bridge's script needs: a window, a document
/// of one element, timers that a test runs, and a console that is kept. One thread.
class ScriptEngine {
 public:
  ScriptEngine();

  /// Runs a script and returns its value as a text. An error is thrown as std::runtime_error.
  std::string run(const std::string& script);
  /// Returns the message of the script's error.
  std::string errorOf(const std::string& script);
  /// Runs the timers that are due, and those that they start. Each failure ends in window.onerror,
  /// as in a page.
  void runTimers();

 private:
  JscPtr<JSCContext> context_;
};

}  // namespace zovk
