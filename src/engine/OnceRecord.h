#pragma once

#include <string>
#include <string_view>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// Returns the once-record without the keys that no popup needs any more. It keeps the keys of the
/// remote popups with a page file and of all local popups, each followed by ",", duplicates
/// included.
std::string prunedOnceRecord(std::string_view record, const PopupList& remote,
                             const PopupList& local);

/// Returns the names of the cache files that the popups need, separated by ",".
std::string cacheKeepList(const PopupList& remote);

}  // namespace zovk
