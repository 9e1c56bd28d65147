#pragma once

#include <string>

namespace zovk::service {

/// 64 hexadecimal digits that nobody can guess. Throws std::runtime_error when there is no
/// randomness to be had.
std::string unguessable();

}  // namespace zovk::service
