#include "ProcessorTime.h"

#include <unistd.h>

#include "PixelWatch.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {

ProcessorTime ProcessorTime::now(const PixelWatch& watch) {
  ProcessorTime time;
  time.game = processorSeconds(getpid()) - watch.processorSeconds();
  for (const pid_t helper : childrenOf(getpid())) {
    time.helper += processorSeconds(helper);
    for (const pid_t process : descendantsOf(helper)) time.web += processorSeconds(process);
  }
  time.screen = processorSeconds(watch.screenProcess());
  return time;
}

ProcessorTime ProcessorTime::operator-(const ProcessorTime& earlier) const {
  return {game - earlier.game, helper - earlier.helper, web - earlier.web, screen - earlier.screen};
}

}  // namespace zovk
