#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "record/ZOVKPopupLoginStateModel.h"
#include "record/ZOVKPopupModel.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {

/// The first rule that a popup fails; `kPassed` if it fails none.
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
  std::string digest;  ///< The digest that `sig` was compared with; set if it differs.
};

/// The data that popups are judged against.
struct SelectionContext {
  double now = 0;  ///< Seconds since 1970.
  ZOVKPopupLoginStateModel loginState;
  ZOVKPopupFileManager& files;
  FileGlance glance;  ///< One selection judges all popups by the same state of the files.
};

/// Receives the judgements in list order.
using JudgementSink = std::function<void(const PopupPointer& popup, const Judgement& judgement)>;

/// Judges every popup for a scene type, and logs why one is rejected.
void judgeForSceneType(const PopupList& popups, std::uint64_t sceneType, SelectionContext& context,
                       const JudgementSink& judged);
/// Judges the popups for a scene up to the first one that fits the scene; the content of that one
/// then decides. A scene has one popup: those behind it are neither examined nor reported.
void judgeForScene(const PopupList& popups, const std::string& scene, SelectionContext& context,
                   const JudgementSink& judged);
/// Judges the content of the popup chosen for its scene. Does not look at the once-record.
Judgement judgeContentForScene(const ZOVKPopupModel& popup, SelectionContext& context);

/// Returns whether `a` is shown before `b`: by priority, publish time and scene, all descending.
bool ranksBefore(const ZOVKPopupModel& a, const ZOVKPopupModel& b);
/// Sorts popups, best first; ties keep their order.
void rankPopups(PopupList& popups);

}  // namespace zovk
