#pragma once

#include <string>

#include <boost/json/object.hpp>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// Returns the address `uri` with extra parameters in its query. An extra key replaces a parameter
/// of the same name.
std::string addressWithExtra(const std::string& uri, const boost::json::object& extraJsonDic);

/// Returns the part before the first "?".
std::string withoutQuery(const std::string& address);

/// Returns the address of the popup's own page without its query. Only addresses that begin with it
/// are loaded inside the popup.
std::string ownPagePrefix(const ZOVKPopupModel& popup);

/// Returns the file address of a popup's page file. If the content type is neither a page file nor
/// a web page, that is just "file://".
std::string pageFileAddress(const ZOVKPopupModel& popup);

}  // namespace zovk
