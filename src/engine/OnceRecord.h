#pragma once

#include <string>
#include <string_view>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// The once-record without the keys that no popup needs any more: those of the remote popups with
/// a page file and of all local popups stay, each followed by ",", duplicates as they stand.
std::string prunedOnceRecord(std::string_view record, const PopupList& remote,
                             const PopupList& local);

/// Names of the cache files that the popups need, separated by ",".
std::string cacheKeepList(const PopupList& remote);

}  // namespace zovk
