#include "zovkpopup/Explain.h"

#include "engine/ZOVKPopupManager.h"

namespace zovk {

ZOVKPopupExplanation ZOVKPopupExplain::explain(const std::string& scene, std::uint64_t sceneType) {
  auto* const manager = ZOVKPopupManager::sharedInstance();
  if (manager == nullptr) return {"ZOVKPopup is not set up, or was shut down.", {}};
  return manager->shared_from_this()->explain(scene, sceneType);
}

}  // namespace zovk
