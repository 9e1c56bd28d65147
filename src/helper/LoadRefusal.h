#pragma once

#include <string>

namespace zovk::helper {

/// Why the engine must not load this address, which is as the engine writes it; empty when it may.
/// The engine would show a directory as a page of links to all of its files.
std::string loadRefusal(const std::string& address);

}  // namespace zovk::helper
