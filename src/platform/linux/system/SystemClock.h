#pragma once

#include "zovkpopup/platform/Clock.h"

namespace zovk {

/// The system's clocks. The uptime goes on while the device sleeps.
class SystemClock : public Clock {
 public:
  double secondsSince1970() const override;
  double systemUptime() const override;
};

}  // namespace zovk
