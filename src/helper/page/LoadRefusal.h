#pragma once

#include <string>

namespace zovk::helper {

/// Returns why the web engine must not load this address, which is in the engine's spelling; empty
/// if it may. The engine would show a directory as a page of links to all of its files.
std::string loadRefusal(const std::string& address);

}  // namespace zovk::helper
