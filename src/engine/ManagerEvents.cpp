#include <utility>

#include "engine/ZOVKPopupManager.h"
#include "presentation/PopupEvent.h"

namespace zovk {
namespace {

bool isOfAnotherRequest(const ZOVKPopupExplainedPopup& popup) {
  return popup.verdict == "other_scene" || popup.verdict == "other_scene_type";
}

}  // namespace

void ZOVKPopupManager::setHooks(ZOVKPopupHooks hooks) {
  hearsEvents_ = static_cast<bool>(hooks.popupEvent);
  eventListener_ = std::move(hooks.popupEvent);
  cover_.setHooks(std::move(hooks));
}

// The event waits in the main queue, so that a listener cannot act in the middle of a step.
void ZOVKPopupManager::notify(ZOVKPopupEvent event) {
  if (!hearsEvents_) return;
  platform_->mainQueue.async([self = shared_from_this(), event = std::move(event)] {
    const auto listener = self->eventListener_;  // a copy, for it may set other hooks
    if (listener) listener(event);
  });
}

void ZOVKPopupManager::notifyNotShown(const ZOVKPopupModel& popup, const char* reason,
                                      const char* sentence) {
  notify(notShown(popup, reason, sentence));
}

void ZOVKPopupManager::notifyPolicyNotNeeded() {
  notify(nothingShown(kPolicyScene, "policy_not_needed",
                      "No policy is newer than the one that the player saw last."));
}

// The selection itself gives the reasons, so they are the same as those of `explain`.
void ZOVKPopupManager::notifyNotSelected(const std::string& scene, std::uint64_t sceneType) {
  if (!hearsEvents_) return;
  const ZOVKPopupExplanation explanation = explain(scene, sceneType);
  bool isAnyDefined = false;
  for (const ZOVKPopupExplainedPopup& popup : explanation.popups) {
    if (isOfAnotherRequest(popup)) continue;
    isAnyDefined = true;
    if (popup.rank != 0) continue;
    ZOVKPopupEvent event = nothingShown(popup.scene, popup.verdict, popup.sentence);
    event.pop_id = popup.pop_id;
    notify(std::move(event));
  }
  if (!isAnyDefined) notify(nothingShown(scene, "no_popup", explanation.sentence));
}

void ZOVKPopupManager::notifyRequestEnded(const PopupList& popups) {
  for (const PopupPointer& popup : popups) notify(requestEnded(*popup));
}

}  // namespace zovk
