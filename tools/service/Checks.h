#pragma once

#include <string>

#include <boost/json/object.hpp>

#include "service/Folder.h"

namespace zovk::service {

/// Returns the answer to a condition query by its name, from `checks.json`: a number stands for
/// "need_popup", an object is the whole answer. An unknown name means that no popup is needed.
boost::json::object answerCheck(const Folder& folder, const std::string& name);

}  // namespace zovk::service
