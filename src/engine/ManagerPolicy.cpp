#include "engine/ZOVKPopupManager.h"
#include "storage/ZOVKPopupFileManager.h"
#include "text/JsonNumbers.h"
#include "zovkpopup/Result.h"

namespace zovk {
namespace {

constexpr const char* kPolicyTimeKey = "zovk_policy_publish_time";

}  // namespace

bool ZOVKPopupManager::needToShowPolicy() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::needToShowPolicy");
  auto* const files = ZOVKPopupFileManager::sharedInstance();
  const std::string saved = files != nullptr ? files->valueForKey(kPolicyTimeKey) : "";
  debug("savedPublishTime:%@", saved);
  const PopupList policy = getValidPopupForScene(kPolicyScene, *mergedPopups());
  if (!policy.empty()) {
    const std::int32_t latest = policy.front()->publish_time;
    debug("lastestPublishTime:%d", latest);
    policyPublishTime_.set(std::to_string(latest));
    if (intValueOfText(saved) < latest) {
      debug("Have new Policy version");
      return true;
    }
  }
  debug("No need to show Policy");
  return false;
}

void ZOVKPopupManager::showPolicy(const ZOVKPopupComplete& complete) {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::showPolicy");
  debug("Start Policy, complete:%p", complete ? &complete : nullptr);
  if (!needToShowPolicy()) {
    debug("No need to show Policy");
    notifyPolicyNotNeeded();
    if (complete) complete(ZOVKPopupResultError, "");
    return;
  }
  debug("Show Policy");
  // What is shown is whatever scene type 0 selects, while the check above went by the scene.
  showPopup("", 0, [self = weak_from_this(), complete](std::int32_t code, const std::string& msg) {
    constexpr DebugLog done = managerLog("ZOVKPopupManager::showPolicy");
    done("Show Policy done");
    const auto manager = self.lock();
    if (code != ZOVKPopupResultCancel && manager != nullptr) manager->savePolicyState();
    if (complete) complete(code, msg);
  });
}

void ZOVKPopupManager::savePolicyState() {
  constexpr DebugLog debug = managerLog("ZOVKPopupManager::savePolicyState");
  debug("Save policy state");
  if (auto* const files = ZOVKPopupFileManager::sharedInstance()) {
    files->saveValue(policyPublishTime(), kPolicyTimeKey);
  }
  debug("Save policy done");
}

}  // namespace zovk
