#include <utility>

#include "engine/ZOVKPopupManager.h"

namespace zovk {

void ZOVKPopupManager::setHeldBack(bool heldBack) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::setHeldBack");
  debug("Hold Popups back:%d", heldBack);
  bool goOn = false;
  {
    const LockGuard lock(mutex_);
    state_.isHeldBack = heldBack;
    goOn = !heldBack && !state_.isPopuping && !state_.popupCache.empty();
  }
  if (goOn) showPopup();
}

// Tells the game that popups are about to cover it. False when they must not.
bool ZOVKPopupManager::coverGame() {
  if (!isHeldBack() && !std::exchange(gameIsCovered_, true)) {
    const auto hook = hooks_.popupsWillAppear;  // it may set other hooks
    if (hook) hook();
  }
  return !isHeldBack();  // the hook may have held them back, or shut the host down
}

void ZOVKPopupManager::uncoverGame() {
  if (!std::exchange(gameIsCovered_, false)) return;
  const auto hook = hooks_.popupsDidDisappear;
  if (hook) hook();
}

// The entry that was claimed stays at the head of the queue.
void ZOVKPopupManager::leaveQueued() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::showPopup");
  debug("Popups are held back, the queue waits");
  {
    const LockGuard lock(mutex_);
    state_.isPopuping = false;
  }
  endShowing();
}

}  // namespace zovk
