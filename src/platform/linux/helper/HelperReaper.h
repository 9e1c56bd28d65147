#pragma once

#include <chrono>
#include <list>

#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/system/LinuxMainQueue.h"

namespace zovk {

/// Reaps ending helpers from the pump, so that nobody waits for them and none stays a zombie. Main
/// thread only.
class HelperReaper {
 public:
  explicit HelperReaper(LinuxMainQueue& queue) : queue_(queue) {}

  void add(HelperProcess process);
  /// Waits for all of them, and kills those that still run after `patience`.
  void finish(std::chrono::milliseconds patience);
  bool isEmpty() const { return processes_.empty(); }

 private:
  LinuxMainQueue& queue_;
  std::list<HelperProcess> processes_;
};

}  // namespace zovk
