#pragma once

#include <functional>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Notices the end of the game, which is the parent process and holds the other end of the socket.
/// It watches on a separate thread, because the main loop may be busy for long. `gone` is called
/// from the main loop. If the process has not ended half a second later, the thread ends it.
class ParentWatch {
 public:
  ParentWatch(int socket, std::function<void()> gone);
  ~ParentWatch();
  ParentWatch(const ParentWatch&) = delete;
  ParentWatch& operator=(const ParentWatch&) = delete;

 private:
  static gboolean onEnd(int descriptor, GIOCondition condition, gpointer self);

  std::function<void()> gone_;
  int ended_ = -1;  // written to by the thread; never closed, since the thread goes on
  SourceGuard source_;
};

}  // namespace zovk::helper
