#include "platform/linux/helper/HelperReaper.h"

#include <system_error>
#include <utility>

namespace zovk {
namespace {

// A killed process is gone within moments, unless the system itself is stuck.
constexpr std::chrono::milliseconds kKilledPatience{500};

}  // namespace

void HelperReaper::add(HelperProcess process) {
  const auto place = processes_.insert(processes_.end(), std::move(process));
  try {
    queue_.addSource(place->descriptor(), [this, place] {
      if (!place->reap()) return;
      queue_.removeSource(place->descriptor());
      processes_.erase(place);
    });
  } catch (const std::system_error&) {
    place->kill();  // it is taken in at the end
  }
}

void HelperReaper::finish(std::chrono::milliseconds patience) {
  const auto deadline = std::chrono::steady_clock::now() + patience;
  for (HelperProcess& process : processes_) {
    queue_.removeSource(process.descriptor());
    if (process.reapUntil(deadline)) continue;
    process.kill();
    process.reapUntil(std::chrono::steady_clock::now() + kKilledPatience);
  }
  processes_.clear();
}

}  // namespace zovk
