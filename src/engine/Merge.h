#pragma once

#include <functional>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// Called for each remote popup that meets a local one of the same scene.
using MergePairSink =
    std::function<void(const ZOVKPopupModel& remote, const ZOVKPopupModel& local)>;

/// The two lists as one: remote popups without a local partner, then local ones without a remote
/// partner, then one winner for each pair. Popups pair by their exact scene, each with one partner
/// at the most, in list order; the later publish time wins, the remote popup on a tie. Takes time
/// in proportion to the lists. The result keeps both lists alive.
PopupList mergePopups(const PopupListPointer& remote, const PopupListPointer& local,
                      const MergePairSink& paired);

}  // namespace zovk
