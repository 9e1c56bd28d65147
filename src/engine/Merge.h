#pragma once

#include <functional>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// Called for each remote popup that meets a local one of the same scene.
using MergePairSink =
    std::function<void(const ZOVKPopupModel& remote, const ZOVKPopupModel& local)>;

/// Merges the two lists: first the remote popups without a local partner, then the local ones
/// without a remote partner, then one winner for each pair. Popups pair if their scenes are equal,
/// in list order, each with one partner at most. The popup with the later publish time wins; on a
/// tie, the remote one. Takes time in proportion to the lists. The result keeps both lists alive.
PopupList mergePopups(const PopupListPointer& remote, const PopupListPointer& local,
                      const MergePairSink& paired);

}  // namespace zovk
