#include "webhost/ParentWatch.h"

#include <utility>

#include <glib-unix.h>
#include <signal.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace zovk {

ParentWatch::ParentWatch(std::function<void()> gone)
    : gone_(std::move(gone)),
      parent_(getppid()),
      source_(g_unix_signal_add(SIGHUP, onSignal, this)) {
  prctl(PR_SET_PDEATHSIG, SIGHUP);
}

gboolean ParentWatch::onSignal(gpointer self) {
  const auto* watch = static_cast<ParentWatch*>(self);
  if (getppid() != watch->parent_) watch->gone_();
  return G_SOURCE_CONTINUE;
}

}  // namespace zovk
