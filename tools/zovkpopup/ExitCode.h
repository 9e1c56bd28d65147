#pragma once

#include <sysexits.h>

namespace zovk::tool {

/// The exit codes of the programs; those from 64 on are the system's own.
enum ExitCode : int {
  kSuccess = 0,
  kProblems = 1,                  ///< The checked or shown file has problems.
  kUsage = EX_USAGE,              ///< 64: the command line is wrong.
  kBadData = EX_DATAERR,          ///< 65: a file is wrong.
  kNoInput = EX_NOINPUT,          ///< 66: a file or folder is missing, or cannot be read.
  kUnavailable = EX_UNAVAILABLE,  ///< 69: no display, no helper, no answer, no port.
  kFault = EX_SOFTWARE,           ///< 70: an error of the program itself.
  kCannotCreate = EX_CANTCREAT,   ///< 73: a file cannot be made in its place.
  kInputOutput = EX_IOERR,        ///< 74: reading or writing failed.
};

}  // namespace zovk::tool
