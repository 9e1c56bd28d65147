#pragma once

#include <string>

namespace zovk {

/// `text` with every byte that is no part of a UTF-8 character replaced by U+FFFD. Any thread.
std::string repairedUtf8(std::string text);

}  // namespace zovk
