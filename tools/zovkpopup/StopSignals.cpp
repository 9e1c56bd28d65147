#include "zovkpopup/StopSignals.h"

#include <csignal>

#include <sys/signalfd.h>

namespace zovk::tool {

// The signals are blocked in every thread, so that they can be read like every other event.
StopSignals::StopSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) sigaddset(&signals, number);
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  signals_.reset(::signalfd(-1, &signals, SFD_CLOEXEC));
}

}  // namespace zovk::tool
