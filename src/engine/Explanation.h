#pragma once

#include <cstdint>
#include <string>

#include "engine/Selection.h"
#include "zovkpopup/Explain.h"

namespace zovk {

/// What popups are selected for: a scene, or, when that is empty, a scene type.
struct SelectionRequest {
  std::string scene;
  std::uint64_t sceneType = 0;
};

/// Puts a judgement into words; the rank is left 0.
ZOVKPopupExplainedPopup explained(const ZOVKPopupModel& popup, const Judgement& judgement,
                                  const SelectionRequest& request, const SelectionContext& context);
/// The same for a popup that was not looked at, because `standing` stands for the scene.
ZOVKPopupExplainedPopup explainedUnreached(const ZOVKPopupModel& popup,
                                           const ZOVKPopupModel& standing);

/// "scene "shop"" or "scene type 3".
std::string requestText(const SelectionRequest& request);

}  // namespace zovk
