#pragma once

#include <optional>
#include <string>

#include "zovkpopup.h"

namespace zovk {

/// What every function of the C interface has in common: nothing is thrown across it, and each
/// failure is told in the log, in one line that begins with the function's name. Any thread.

/// Why a function of the C interface fails; thrown within it.
struct Fault {
  zovkpopup_status status;
  std::string why;      ///< What the log is told; empty for the status's own message.
  bool isTold = false;  ///< The log has been told already.
};

/// The status of what was thrown, from within its handler; tells the log, or standard error while
/// there is no host whose log could take it.
zovkpopup_status statusOfThrown(const char* function) noexcept;
/// This process has a host from now on, and the log a place to go.
void hostIsSetUp();

/// Does `work` and makes a status of how that went.
template <class Work>
zovkpopup_status guarded(const char* function, Work&& work) noexcept {
  try {
    work();
    return ZOVKPOPUP_OK;
  } catch (...) {
    return statusOfThrown(function);
  }
}

/// Each throws unless a call may be made now: `requireMainThread` on this thread, `requireHost` on
/// any, of a host that is set up; `requirePopups` on this one, of a game that may do without.
void requireMainThread();
void requireHost();
void requirePopups();

/// Throws when something that has to be there is not.
template <class Pointer>
void require(Pointer argument, const char* name) {
  if (argument == nullptr) throw Fault{ZOVKPOPUP_ERROR_ARGUMENT, std::string(name) + " is NULL"};
}

inline std::string textOrEmpty(const char* text) {
  return text == nullptr ? std::string() : std::string(text);
}

}  // namespace zovk
