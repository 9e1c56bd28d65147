#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "record/ZOVKPopupLoginStateModel.h"
#include "record/ZOVKPopupModel.h"
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

struct Judgement {
  Verdict verdict = Verdict::kPassed;
  std::string digest;  ///< What `sig` was compared with; set when it differs.
};

/// What a popup is judged against.
struct SelectionContext {
  double now = 0;  ///< Seconds since 1970.
  ZOVKPopupLoginStateModel loginState;
  ZOVKPopupFileManager& files;
  FileGlance glance;  ///< One selection judges all popups by the same state of the files.
};

/// Hears the judgements in list order.
using JudgementSink = std::function<void(const PopupPointer& popup, const Judgement& judgement)>;

/// Judges every popup for a scene type, and logs why one is passed over.
void judgeForSceneType(const PopupList& popups, std::uint64_t sceneType, SelectionContext& context,
                       const JudgementSink& judged);
/// Judges the popups for a scene up to the first that may stand for it, whose content then decides.
/// One scene stands for one popup: those behind it are not looked at, and not told of.
void judgeForScene(const PopupList& popups, const std::string& scene, SelectionContext& context,
                   const JudgementSink& judged);
/// Judges the content of the popup that stands for its scene. The once-record is not asked.
Judgement judgeContentForScene(const ZOVKPopupModel& popup, SelectionContext& context);

/// Whether `a` is to be shown before `b`: by priority, publish time and scene, all descending.
bool ranksBefore(const ZOVKPopupModel& a, const ZOVKPopupModel& b);
/// Best first; ties keep their order.
void rankPopups(PopupList& popups);

}  // namespace zovk
