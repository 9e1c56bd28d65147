#pragma once

#include <functional>

#include "webhost/GObjectPtr.h"

namespace zovk {

/// A second guard beside the socket: the system signals the end of the parent process, which is
/// the game. It signals the end of the game's thread that started the helper just as well; that
/// is told apart.
class ParentWatch {
 public:
  explicit ParentWatch(std::function<void()> gone);
  ParentWatch(const ParentWatch&) = delete;
  ParentWatch& operator=(const ParentWatch&) = delete;

 private:
  static gboolean onSignal(gpointer self);

  std::function<void()> gone_;
  pid_t parent_;
  SourceGuard source_;
};

}  // namespace zovk
