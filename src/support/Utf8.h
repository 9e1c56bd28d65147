#pragma once

#include <string>
#include <string_view>

namespace zovk {

/// Returns whether the bytes are well-formed UTF-8. Any thread.
bool isUtf8(std::string_view bytes);

/// Returns `text` with U+FFFD in place of every byte that is not part of a UTF-8 character. Any
/// thread.
std::string repairedUtf8(std::string text);

}  // namespace zovk
