#pragma once

#include <memory>
#include <utility>

#include "capi/Boundary.h"

namespace zovk {

/// What comes with a game's callback. It is let go when the last copy of the callback is.
using UserData = std::shared_ptr<void>;

/// `destroy`, if any, is called with `user` once, also when this throws.
inline UserData userData(void* user, zovkpopup_destroy destroy) {
  return UserData(user, [destroy](void* data) noexcept {
    guarded("A callback", [&] {
      if (destroy != nullptr) destroy(data);
    });
  });
}

/// A function of the game's with its user data. It may be copied, and called when it is none.
/// What it throws is told in the log and goes no further.
template <class... Arguments>
class Callback {
 public:
  using Function = void (*)(Arguments..., void* user);

  Callback(Function function, UserData user) : function_(function), user_(std::move(user)) {}
  explicit operator bool() const { return function_ != nullptr; }
  void operator()(Arguments... arguments) const noexcept {
    guarded("A callback", [&] {
      if (function_ != nullptr) function_(arguments..., user_.get());
    });
  }

 private:
  Function function_;
  UserData user_;
};

}  // namespace zovk
