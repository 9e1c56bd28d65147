#pragma once

#include "support/UniqueFd.h"

namespace zovk::tool {

/// SIGINT, SIGTERM and SIGHUP as something to be read instead of the end of the program. Make it
/// before there is another thread.
class StopSignals {
 public:
  StopSignals();
  /// Readable when one came.
  int descriptor() const { return signals_.get(); }

 private:
  UniqueFd signals_;
};

}  // namespace zovk::tool
