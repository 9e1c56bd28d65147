#pragma once

#include <string>
#include <string_view>

namespace zovk {

/// Whether the bytes are well-formed UTF-8. Any thread.
bool isUtf8(std::string_view bytes);

/// `text` with every byte that is no part of a UTF-8 character replaced by U+FFFD. Any thread.
std::string repairedUtf8(std::string text);

}  // namespace zovk
