#pragma once

#include <string>

namespace zovk::service {

/// Returns 64 hexadecimal digits that nobody can guess. Throws std::runtime_error if the system
/// gives no random bytes.
std::string unguessable();

}  // namespace zovk::service
