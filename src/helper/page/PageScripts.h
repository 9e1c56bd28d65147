#pragma once

#include <string>
#include <vector>

namespace zovk::helper {

// The scripts as they are in their files: each is a function, to be called with its parameters.
std::string BoundedJson_js();
std::string PageMessages_js();
std::string PageMessageGuard_js();
std::string GamePad_js();

/// The name of the script world that no page can reach, and of the handler in it.
inline constexpr const char* kGuardWorld = "zovk";

/// Returns a function that makes JSON text of a value, unless the text is too long or the values
/// too many.
std::string boundedJsonScript(std::size_t longest);
/// Returns the script for the pages, which gives them the handlers of these names.
std::string pageMessagesScript(const std::vector<std::string>& handlers);
/// Returns the script for the separate world.
std::string pageMessageGuardScript();

}  // namespace zovk::helper
