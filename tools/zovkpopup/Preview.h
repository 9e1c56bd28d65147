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

#include "zovkpopup/HelperOutput.h"
#include "zovkpopup/PageConsole.h"
#include "zovkpopup/PreviewBundle.h"
#include "zovkpopup/PreviewScreen.h"
#include "zovkpopup/StopSignals.h"

namespace zovk::tool {

/// The answer that a game would have got.
struct PreviewAnswer {
  std::int32_t code = -1;
  std::string message;
};

/// The findings about the page so far. Only the first thousand of each are kept.
struct PreviewFindings {
  std::vector<ConsoleMessage> console;
  std::vector<std::string> remarks;  ///< On what it posted.
};

/// Shows the popup of a bundle with the real library and its helper. Writes the page's console and
/// the ignored posts to standard error. Main thread only; one at a time. Ends early when the
/// program is asked to end.
class Preview {
 public:
  /// Without a size, the popup takes the whole screen. Throws ToolError if nothing can be shown:
  /// without a display, in a size that does not fit, or for an address that the server refuses.
  Preview(const PreviewBundle& bundle, const std::optional<Size>& size, const StopSignals& signals);
  ~Preview();
  Preview(const Preview&) = delete;
  Preview& operator=(const Preview&) = delete;

  /// Waits for the page's answer. Throws ToolError if the page does not load, or if nothing can be
  /// shown.
  std::optional<PreviewAnswer> awaitAnswer();
  /// Writes a picture once the page has loaded. Returns false if it ended before. Throws ToolError
  /// if it fails.
  bool takePicture(const std::string& file);
  /// Runs everything until something happens, also at `descriptor`, or the preview is over. A page
  /// that does not load is only reported.
  void run(int descriptor);
  /// Loads the page again.
  void reload();

  bool isStopped() const { return stopped_; }
  const std::optional<PreviewAnswer>& answer() const { return answer_; }
  const PreviewFindings& findings() const { return findings_; }
  void say(const std::string& line) const { output_.say(line); }

 private:
  enum class Page { kLoading, kLoaded, kFailed };

  void setUp(const PreviewBundle& bundle, const std::optional<Size>& size);
  void refuseSizeBeyondScreen(const Size& size);
  void refuseBadStatus(const std::string& address);
  void turn(int milliseconds = -1, int descriptor = -1);
  /// Runs everything for `time`, or until `enough` returns true or the preview is over.
  void turnFor(std::chrono::milliseconds time, const std::function<bool()>& enough);
  void hear(std::string_view line);
  void hearPost(const std::string& handler, const std::optional<boost::json::value>& body);
  void readConsole(std::string_view line);
  void failIfNothingIsShown() const;
  std::string failure() const;
  bool isOver() const { return stopped_ || answer_.has_value(); }

  const StopSignals& signals_;
  const std::string target_;
  const PageConsole console_;
  HelperOutput output_;
  std::atomic<Page> page_ = Page::kLoading;
  std::shared_ptr<HostedPlatform> platform_;    ///< The real platform.
  std::shared_ptr<PreviewPlatform> previewed_;  ///< The platform that the library sees.
  std::optional<PreviewAnswer> answer_;
  PreviewFindings findings_;
  bool stopped_ = false;
  mutable std::mutex mutex_;
  std::string failure_;  ///< Why the page did not load.
};

}  // namespace zovk::tool
