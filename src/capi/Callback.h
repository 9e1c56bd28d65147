#pragma once

#include <memory>
#include <utility>

#include "capi/Boundary.h"

namespace zovk {

/// The user data of a game's callback. It is released with the last copy of the callback.
using UserData = std::shared_ptr<void>;

/// Makes user data. `destroy`, if any, is called with `user` once, even if this throws.
inline UserData userData(void* user, zovkpopup_destroy destroy) {
  return UserData(user, [destroy](void* data) noexcept {
    guarded("A callback", [&] {
      if (destroy != nullptr) destroy(data);
    });
  });
}

/// A function of the game with its user data. May be copied. Calling an empty one has no effect.
/// Exceptions that the function throws are written to the log and go no further.
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
