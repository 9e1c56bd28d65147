#pragma once

#include <optional>
#include <string>

#include "zovkpopup.h"

namespace zovk {

/// The common parts of all functions of the C interface: none of them throws, and each failure
/// writes one log line that begins with the function's name. Any thread.

/// The reason for a failure of a function of the C interface; thrown within it.
struct Fault {
  zovkpopup_status status;
  std::string why;      ///< The text for the log; empty for the status's own message.
  bool isTold = false;  ///< The failure is in the log already.
};

/// Returns the status of the current exception; call it within a handler. Writes to the log, or to
/// standard error if no host has been set up.
zovkpopup_status statusOfThrown(const char* function) noexcept;
/// Reports that this process has a host now, whose log takes lines.
void hostIsSetUp();

/// Runs `work` and returns its status.
template <class Work>
zovkpopup_status guarded(const char* function, Work&& work) noexcept {
  try {
    work();
    return ZOVKPOPUP_OK;
  } catch (...) {
    return statusOfThrown(function);
  }
}

/// Each throws unless a call is allowed now. `requireMainThread` checks that this is the main
/// thread; `requireHost`, on any thread, that a host is set up. `requirePopups` makes the default
/// host for a game without set-up, and checks that this is the main thread.
void requireMainThread();
void requireHost();
void requirePopups();

/// Throws if a required pointer is null.
template <class Pointer>
void require(Pointer argument, const char* name) {
  if (argument == nullptr) throw Fault{ZOVKPOPUP_ERROR_ARGUMENT, std::string(name) + " is NULL"};
}

inline std::string textOrEmpty(const char* text) {
  return text == nullptr ? std::string() : std::string(text);
}

}  // namespace zovk
