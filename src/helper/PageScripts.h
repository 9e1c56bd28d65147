#pragma once

#include <string>
#include <vector>

namespace zovk::helper {

// The scripts as files hold them: each is a function that is called with what it depends on.
std::string BoundedJson_js();
std::string PageMessages_js();
std::string PageMessageGuard_js();
std::string GamePad_js();

/// The name of the world of scripts, and of the handler in it, that no page reaches.
inline constexpr const char* kGuardWorld = "zovk";

/// A function that makes JSON text of a value, unless the text or the values are too many.
std::string boundedJsonScript(std::size_t longest);
/// For the pages: gives them the handlers of these names.
std::string pageMessagesScript(const std::vector<std::string>& handlers);
/// For the world of its own.
std::string pageMessageGuardScript();

}  // namespace zovk::helper
