#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include <zovkpopup/Export.h>
#include <zovkpopup/Result.h>

namespace zovk {

/// The engine's version.
extern ZOVKPOPUP_API const char* const ZOVKPopupCurrentVersionString;

/// Receives the result of a request to show popups. `code` is a `ZOVKPopupResult` as a number.
/// `message` is a JSON text {"action":…,"msg":…} with the page's message, or a plain text, or
/// empty. Called at most once: not if a conditional popup commits with no popup behind it, and not
/// if the host is shut down first. docs/integration.md has a table of all cases.
using ZOVKPopupComplete = std::function<void(std::int32_t code, const std::string& message)>;

/// The five calls with which a game drives its popups. Main thread only. Texts are UTF-8; an empty
/// text means no text. Nothing throws. Callbacks are copied, may be empty, and may call back into
/// this class. They come from `ZOVKPopupHost::pump`, or at once from within the call where a
/// comment says so.
class ZOVKPOPUP_API ZOVKPopup {
 public:
  /// Shows the privacy policy if a newer version was published than the one the player saw last.
  /// Otherwise `complete` is called at once with -1 and "".
  static void showPolicy(const ZOVKPopupComplete& complete);

  /// Starts the popups. Only the first call in a process has an effect. `baseUrl` is the address of
  /// the popup service, without a trailing slash.
  static void startPopup(const std::string& baseUrl, const std::string& gameID,
                         const std::string& gameKey);

  /// Returns whether a popup for this scene type would be shown now. A conditional popup counts;
  /// its service is not asked.
  static bool havePopup(std::uint64_t sceneType);

  /// Shows the popup of a scene or, if `scene` is empty, every valid popup of the scene type, best
  /// first. Requests are shown one after another. If there is nothing to show, `complete` is called
  /// at once with -1 and "No valid Popup now". The request ends with 0 and "reatin complete" if the
  /// service does not want its conditional popup after all, or if a page commits without an address
  /// to report to. After a cancel, the popups behind it are not shown.
  static void showPopup(const std::string& scene, std::uint64_t sceneType,
                        const ZOVKPopupComplete& complete);

  /// Sets the player's identity. May be called at any time and any number of times.
  static void setChannelID(std::int32_t channelID, const std::string& openID,
                           const std::string& token, const std::string& jwtToken);
};

}  // namespace zovk
