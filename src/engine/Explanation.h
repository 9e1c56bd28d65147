#pragma once

#include <cstdint>
#include <string>

#include "engine/Selection.h"
#include "zovkpopup/Explain.h"

namespace zovk {

/// A request for popups: for a scene or, if that is empty, for a scene type.
struct SelectionRequest {
  std::string scene;
  std::uint64_t sceneType = 0;
};

/// Returns a judgement in words; the rank is left 0.
ZOVKPopupExplainedPopup explained(const ZOVKPopupModel& popup, const Judgement& judgement,
                                  const SelectionRequest& request, const SelectionContext& context);
/// Returns the words for a popup that was not examined, because `standing` was chosen for the
/// scene.
ZOVKPopupExplainedPopup explainedUnreached(const ZOVKPopupModel& popup,
                                           const ZOVKPopupModel& standing);

/// "scene "shop"" or "scene type 3".
std::string requestText(const SelectionRequest& request);

}  // namespace zovk
