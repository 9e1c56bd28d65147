#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <zovkpopup/Export.h>
#include <zovkpopup/Result.h>

namespace zovk {

/// The engine's version.
extern ZOVKPOPUP_API const char* const ZOVKPopupCurrentVersionString;

/// Hears how a request to show popups ended. `code` is a `ZOVKPopupResult`, as a number; `message`
/// is a JSON text {"action":…,"msg":…} with what the page said, or a plain text, or empty. Called
/// once at the most: not when a conditional popup commits with none behind it, nor when the host
/// is shut down before. docs/integration.md has a table of all cases.
using ZOVKPopupComplete = std::function<void(std::int32_t code, const std::string& message)>;

/// The five calls with which a game drives its popups. Main thread only. Texts are UTF-8; an empty
/// text counts as absent. Nothing throws. Callbacks are copied and may call back into this class;
/// an empty callback is none. They come from `ZOVKPopupHost::pump`, or at once from within the
/// call where that is said.
class ZOVKPOPUP_API ZOVKPopup {
 public:
  /// Shows the privacy policy if a newer one was published than the player last saw. Otherwise
  /// `complete` is called at once with -1 and "".
  static void showPolicy(const ZOVKPopupComplete& complete);

  /// Starts the popups: once per process, later calls are ignored. `baseUrl` is the address of the
  /// popup service, without a trailing slash.
  static void startPopup(const std::string& baseUrl, const std::string& gameID,
                         const std::string& gameKey);

  /// Whether a popup for this scene type would be shown now. A conditional popup counts without
  /// its service being asked.
  static bool havePopup(std::uint64_t sceneType);

  /// Shows the popup of a scene, or, when `scene` is empty, every valid popup of the scene type,
  /// best first. Requests are shown one after another. With nothing to show, `complete` is called
  /// at once with -1 and "No valid Popup now". A request whose popup may not be shown after all, as
  /// its service does not want it, or whose page commits without an address to report to, ends with
  /// 0 and "reatin complete". Popups behind one that is cancelled are not shown.
  static void showPopup(const std::string& scene, std::uint64_t sceneType,
                        const ZOVKPopupComplete& complete);

  /// Tells who the player is. May be called at any time and any number of times.
  static void setChannelID(std::int32_t channelID, const std::string& openID,
                           const std::string& token, const std::string& jwtToken);
};

}  // namespace zovk
