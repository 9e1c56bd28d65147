#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include <zovkpopup/platform/GamePicture.h>

namespace zovk {

/// The settings of a host. Every member has a default.
struct ZOVKPopupHostSettings {
  /// The name of the folder for the application's data: letters, digits, dots, dashes, underscores.
  /// Default: the program's name.
  std::string applicationId;
  /// The directory of the game's resources (absolute path). Default: the program's directory. The
  /// library looks for the bundle "ZOVKPopupResource.bundle" there first, then beside itself.
  std::string resourceDirectory;
  /// The application's home directory. Default: `$XDG_DATA_HOME/<applicationId>`.
  std::string dataDirectory;
  /// The path of the helper program `zovkpopup-helper`. Default: the one installed with the
  /// library.
  std::string helperPath;
  /// The X11 window of the game, or 0 if it has none. Popups cover it and give the keyboard back to
  /// it.
  std::uint64_t nativeWindow = 0;
  /// A PEM file (absolute path) with certificate authorities to trust in addition to the system's,
  /// for a popup service whose certificate the system does not trust. Default: none.
  std::string certificateAuthority;
  /// Receives the log lines, without line ends, which otherwise go to standard error. Called from
  /// any thread, also while other calls are running. It must not call the library.
  std::function<void(std::string_view line)> logSink;
  /// The memory limit of a page's process, in megabytes of 1,048,576 bytes, at least 64. It is
  /// checked once a second. A process beyond the limit is ended and its page loaded again.
  std::uint32_t pageMemory = 1024;
  /// How popups are drawn. "hardware" uses the graphics processor, "software" does not. "plain"
  /// uses the least memory, for pages that are opaque or do not move. "auto", the default, uses the
  /// graphics processor if there is one. "look" does the same, but asks the graphics driver even if
  /// no device is found. Upper and lower case are the same. The environment variable
  /// `ZOVKPOPUP_DRAWING` overrides this setting. Hardware that failed is not tried again.
  std::string drawing;
  /// The game's window as text: "x11:NUMBER", with the number that `nativeWindow` takes, or
  /// "wayland:HANDLE", with the handle from the compositor's `zxdg_exporter`. Popups then stand
  /// over that window. Default: the window in `nativeWindow`.
  std::string gameWindow{};
  /// The kind of popup window. "auto", the default, stands over the game's window if the display
  /// allows it. "fullscreen" takes the whole screen, for games that have a screen to themselves.
  /// Upper and lower case are the same. The environment variable `ZOVKPOPUP_WINDOW` overrides this
  /// setting.
  std::string popupWindow{};
  /// Provides the game's last frame for displays on which a popup hides the game: in kiosks,
  /// without a compositor that blends windows, and if the game's window cannot be named on Wayland.
  /// The frame is then drawn beneath the page; without it, the ground there is plain and dark.
  /// Called on the main thread when popups are about to cover the game, and again after the popup's
  /// size has changed; never on displays that show the game. It must not call the library or throw.
  ZOVKPopupBackdrop backdrop{};
  /// Whether the helper program writes the pages' console to its standard output, which is the
  /// game's. For tools.
  bool pageConsole = false;
  /// The seconds after the last popup in which the next one can appear without delay. Then the
  /// helper gives way to one with hardly any memory, and ten minutes later that one ends. The next
  /// popup makes one ready again; so does a `havePopup` that returns true, best called a second
  /// ahead.
  std::uint32_t readySeconds = 60;
};

}  // namespace zovk
