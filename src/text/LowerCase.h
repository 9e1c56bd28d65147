#pragma once

#include <string>

namespace zovk {

/// Returns the text with its ASCII letters in lower case, whatever the locale.
std::string lowerCase(std::string text);

}  // namespace zovk
