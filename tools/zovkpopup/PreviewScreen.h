#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk::tool {

/// Width and height of WIDTHxHEIGHT; absent for an empty text. Throws ToolError for another.
std::optional<Size> sizeOf(const std::string& text);

/// A platform whose screen has another size than the real one, so that popups open in that size.
std::shared_ptr<HostedPlatform> withScreenSize(std::shared_ptr<HostedPlatform> platform,
                                               const Size& size);

}  // namespace zovk::tool
