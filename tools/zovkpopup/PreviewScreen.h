#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <boost/json/value.hpp>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk::tool {

/// Width and height of WIDTHxHEIGHT; absent for an empty text. Throws ToolError for another.
std::optional<Size> sizeOf(const std::string& text);

/// What is different from a game.
struct PreviewWishes {
  using Posted = std::function<void(const std::string& handler,
                                    const std::optional<boost::json::value>& body)>;

  std::optional<Size> size;  ///< In which popups open; absent for the whole screen.
  Posted posted;             ///< Hears every post of a page, on the main thread.
};

/// A platform that shows one page.
class PreviewPlatform : public HostedPlatform {
 public:
  /// Loads the page again that is shown.
  virtual void reloadPage() = 0;
};

std::shared_ptr<PreviewPlatform> previewPlatform(std::shared_ptr<HostedPlatform> real,
                                                 PreviewWishes wishes);

}  // namespace zovk::tool
