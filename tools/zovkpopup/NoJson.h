#pragma once

#include <string>
#include <string_view>

#include "zovkpopup/JsonText.h"

namespace zovk::tool {

/// What is wrong with a text that is no JSON: the parser's words, the line, and what is usually the
/// cause of that.
std::string whyNoJson(std::string_view text, const JsonText& json);

}  // namespace zovk::tool
