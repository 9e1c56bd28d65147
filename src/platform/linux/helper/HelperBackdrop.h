#pragma once

#include <chrono>
#include <optional>

#include "platform/linux/system/SharedPicture.h"
#include "protocol/FrameCodec.h"
#include "support/LineLimit.h"
#include "zovkpopup/platform/GamePicture.h"

namespace zovk {

/// Asks the game for its last frame, which is drawn beneath popups, if the helper reports that
/// nothing can be seen through them. Main thread only.
class HelperBackdrop {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  /// A helper that asks more often within a second is ignored: each request costs the game a frame
  /// that it has to read and copy.
  static constexpr int kMostInASecond = 20;

  /// The answer to the helper.
  struct Answer {
    HelperMessage command;
    UniqueFd pixels;
  };

  explicit HelperBackdrop(ZOVKPopupBackdrop game);

  /// Sets whether the helper hides the game, or will once it shows something.
  void setWanted(bool wanted) { wanted_ = wanted && game_ != nullptr; }
  bool isWanted() const { return wanted_; }
  /// Stops asking the game.
  void close();
  /// Returns the game's frame. Returns nothing if the game has none, or none that may be sent; the
  /// log then says why.
  std::optional<Answer> ask(TimePoint now);

 private:
  bool isTooOften(TimePoint now);

  ZOVKPopupBackdrop game_;
  LineLimit refusals_;
  bool wanted_ = false;
  std::optional<TimePoint> secondBegan_;
  int asked_ = 0;  // in this second
};

}  // namespace zovk
