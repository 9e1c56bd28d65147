#include "engine/GameCover.h"

namespace zovk {

void GameCover::cover() {
  if (std::exchange(isCovered_, true)) return;
  const auto hook = hooks_.popupsWillAppear;
  if (hook) hook();
}

void GameCover::uncover() {
  if (!std::exchange(isCovered_, false)) return;
  const auto hook = hooks_.popupsDidDisappear;
  if (hook) hook();
}

}  // namespace zovk
