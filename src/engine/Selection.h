#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "engine/ZOVKPopupLoginStateModel.h"
#include "engine/ZOVKPopupModel.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {

/// The first rule that a popup fails; `kPassed` when it fails none.
enum class Verdict {
  kPassed,
  kOtherScene,
  kOtherSceneType,
  kOtherChannel,
  kNotYetValid,
  kExpired,
  kFileMissing,
  kAlreadyShown,
  kDigestDiffers,
};

/// What a popup is judged against.
struct SelectionContext {
  double now = 0;  ///< Seconds since 1970.
  ZOVKPopupLoginStateModel loginState;
  ZOVKPopupFileManager& files;
  FileGlance glance;  ///< One selection judges all popups by the same state of the files.
};

/// Judges one popup for a scene type, and logs why it is passed over.
Verdict judgeForSceneType(const ZOVKPopupModel& popup, std::uint64_t sceneType,
                          SelectionContext& context);

/// Judges everything but the content of one popup for a scene.
Verdict judgeForScene(const ZOVKPopupModel& popup, const std::string& scene,
                      SelectionContext& context);
/// Judges the content of the popup that stands for its scene. The once-record is not asked.
Verdict judgeContentForScene(const ZOVKPopupModel& popup, SelectionContext& context);

/// Best first: by priority, publish time and scene, all descending; ties keep their order.
void rankPopups(PopupList& popups);

}  // namespace zovk
