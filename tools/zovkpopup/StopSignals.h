#pragma once

#include "support/UniqueFd.h"

namespace zovk::tool {

/// Turns SIGINT, SIGTERM and SIGHUP into a readable descriptor instead of the program's end. Make
/// it before there is another thread.
class StopSignals {
 public:
  StopSignals();
  /// Returns a descriptor that is readable when one came.
  int descriptor() const { return signals_.get(); }

 private:
  UniqueFd signals_;
};

}  // namespace zovk::tool
