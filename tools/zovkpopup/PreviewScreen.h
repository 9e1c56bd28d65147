#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <boost/json/value.hpp>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk::tool {

/// Returns width and height of WIDTHxHEIGHT, or nothing for an empty text. Throws ToolError for any
/// other text.
std::optional<Size> sizeOf(const std::string& text);

/// The differences from a game.
struct PreviewWishes {
  using Posted = std::function<void(const std::string& handler,
                                    const std::optional<boost::json::value>& body)>;

  std::optional<Size> size;  ///< The size of popups; absent for the whole screen.
  Posted posted;             ///< Receives every post of a page, on the main thread.
};

/// A platform that shows one page.
class PreviewPlatform : public HostedPlatform {
 public:
  /// Loads the shown page again.
  virtual void reloadPage() = 0;
};

std::shared_ptr<PreviewPlatform> previewPlatform(std::shared_ptr<HostedPlatform> real,
                                                 PreviewWishes wishes);

}  // namespace zovk::tool
