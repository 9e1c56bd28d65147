#pragma once

#include <string>
#include <string_view>
#include <system_error>

namespace zovk {

/// Writes the bytes to a file beside `path`, and moves it into place once they are on disk. A crash
/// may leave a file named ".zovkpopup-write-" and six characters; a failure leaves nothing.
std::error_code replaceFile(const std::string& path, std::string_view bytes);

}  // namespace zovk
