#pragma once

#include <string_view>

namespace zovk {

/// Whether the bytes are well-formed UTF-8. Any thread.
bool isUtf8(std::string_view bytes);

}  // namespace zovk
