#pragma once

#include <chrono>
#include <optional>

#include "platform/linux/system/SharedPicture.h"
#include "protocol/FrameCodec.h"
#include "support/LineLimit.h"
#include "zovkpopup/platform/GamePicture.h"

namespace zovk {

/// Asks the game for the frame that lies beneath popups, where the helper says that nothing can be
/// seen through them. Main thread only.
class HelperBackdrop {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;
  /// A helper that asks more often within a second is not served: each time costs the game a frame
  /// that it has to read and copy.
  static constexpr int kMostInASecond = 20;

  /// What goes to the helper.
  struct Answer {
    HelperMessage command;
    UniqueFd pixels;
  };

  explicit HelperBackdrop(ZOVKPopupBackdrop game);

  /// The helper hides the game, or will once it shows something.
  void setWanted(bool wanted) { wanted_ = wanted && game_ != nullptr; }
  bool isWanted() const { return wanted_; }
  /// The game is not asked any more.
  void close();
  /// Absent when the game has nothing to give, or nothing that may be given, which it is told.
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
