#pragma once

#include <string>

#include <boost/json/object.hpp>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// The address `uri` with extra parameters in its query; an extra key takes the place of a
/// parameter of the same name.
std::string addressWithExtra(const std::string& uri, const boost::json::object& extraJsonDic);

/// What stands before the first "?".
std::string withoutQuery(const std::string& address);

/// The address of the popup's own page without its query. Only addresses that begin with it are
/// loaded inside the popup.
std::string ownPagePrefix(const ZOVKPopupModel& popup);

/// The file address of a popup's page file. A popup whose content type is no page file and no web
/// page has none: just "file://".
std::string pageFileAddress(const ZOVKPopupModel& popup);

}  // namespace zovk
