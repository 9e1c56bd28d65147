#include "engine/ZOVKPopupManager.h"

namespace zovk {

void ZOVKPopupManager::setHeldBack(bool heldBack) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::setHeldBack");
  debug("Hold Popups back:%d", heldBack);
  if (queue_.setHeldBack(heldBack)) showPopup();
}

// Tells the game that popups are about to cover it. Returns false if they must not.
bool ZOVKPopupManager::coverGame() {
  if (!isHeldBack()) cover_.cover();
  return !isHeldBack();  // the hook may have held them back, or shut the host down
}

// The entry that was claimed stays at the head of the queue.
void ZOVKPopupManager::leaveQueued() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::showPopup");
  debug("Popups are held back, the queue waits");
  queue_.leaveScreen();
  endShowing();
}

}  // namespace zovk
