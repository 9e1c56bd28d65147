#pragma once

#include <sysexits.h>

namespace zovk::tool {

/// What the programs exit with; those from 64 on are the system's own.
enum ExitCode : int {
  kSuccess = 0,
  kProblems = 1,                  ///< Something is wrong with what was checked or shown.
  kUsage = EX_USAGE,              ///< 64: the command line.
  kBadData = EX_DATAERR,          ///< 65: a file is not what it has to be.
  kNoInput = EX_NOINPUT,          ///< 66: a file or folder is not there, or cannot be read.
  kUnavailable = EX_UNAVAILABLE,  ///< 69: no display, no helper, no answer, no port.
  kFault = EX_SOFTWARE,           ///< 70: the program's own.
  kCannotCreate = EX_CANTCREAT,   ///< 73: a file cannot be written where it should be.
  kInputOutput = EX_IOERR,        ///< 74: reading or writing failed on the way.
};

}  // namespace zovk::tool
