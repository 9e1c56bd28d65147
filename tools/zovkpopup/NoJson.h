#pragma once

#include <string>
#include <string_view>

#include "zovkpopup/JsonText.h"

namespace zovk::tool {

/// Returns what is wrong with a text that is not JSON: the parser's message, the line, and the
/// usual cause.
std::string whyNoJson(std::string_view text, const JsonText& json);

}  // namespace zovk::tool
