#include "platform/linux/helper/HelperBackdrop.h"

#include <utility>

#include "logging/ZPLogger.h"
#include "protocol/MessageNames.h"

namespace zovk {

HelperBackdrop::HelperBackdrop(ZOVKPopupBackdrop game) : game_(std::move(game)) {}

std::optional<HelperBackdrop::Answer> HelperBackdrop::ask(TimePoint now) {
  if (!wanted_ || isTooOften(now)) return std::nullopt;
  const ZOVKPopupBackdrop game = game_;  // which may shut down
  const ZOVKPopupPicture picture = game();
  if (picture.pixels == nullptr) return std::nullopt;
  SharedPicture shared = sharePicture(picture);
  if (!shared.pixels) {
    const auto line = refusals_.line("The game's backdrop is left out: " + shared.error);
    if (line) logError("%s", *line);
    return std::nullopt;
  }
  return Answer{{{member::kType, command::kBackdrop},
                 {member::kWidth, picture.width},
                 {member::kHeight, picture.height}},
                std::move(shared.pixels)};
}

void HelperBackdrop::close() {
  wanted_ = false;
  game_ = nullptr;
}

bool HelperBackdrop::isTooOften(TimePoint now) {
  if (!secondBegan_ || now - *secondBegan_ >= std::chrono::seconds(1)) {
    secondBegan_ = now;
    asked_ = 0;
  }
  return ++asked_ > kMostInASecond;
}

}  // namespace zovk
