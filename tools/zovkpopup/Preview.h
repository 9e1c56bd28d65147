#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/UniqueFd.h"
#include "zovkpopup/PreviewBundle.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk::tool {

/// What the game would have been told.
struct PreviewAnswer {
  std::int32_t code = -1;
  std::string message;
};

/// Shows the popup of a bundle with the real library and its helper. Main thread only; one in a
/// process. Ends early, without an answer or a picture, when the program is asked to end (SIGINT,
/// SIGTERM, SIGHUP).
class Preview {
 public:
  /// Without a size, on the whole screen. Throws ToolError when the library cannot be set up.
  Preview(const PreviewBundle& bundle, const std::optional<Size>& size);
  ~Preview();
  Preview(const Preview&) = delete;
  Preview& operator=(const Preview&) = delete;

  std::optional<PreviewAnswer> awaitAnswer();
  /// Writes a picture once the page has loaded. Throws ToolError when it cannot.
  bool takePicture(const std::string& file);
  /// The engine's error lines so far.
  std::string errors() const;

 private:
  enum class Page { kLoading, kLoaded, kFailed };

  void turn(int milliseconds = -1);
  /// Until there is enough of it, or it is over.
  void turnFor(std::chrono::milliseconds time, const std::function<bool()>& enough);
  void hear(std::string_view line);
  bool isOver() const { return stopped_ || answer_.has_value(); }

  UniqueFd signals_;
  std::atomic<Page> page_ = Page::kLoading;
  std::shared_ptr<HostedPlatform> platform_;  ///< The real one, whatever its screen's size.
  std::optional<PreviewAnswer> answer_;
  bool stopped_ = false;
  mutable std::mutex mutex_;
  std::vector<std::string> errors_;
};

}  // namespace zovk::tool
