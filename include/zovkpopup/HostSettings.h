#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include <zovkpopup/platform/GamePicture.h>

namespace zovk {

/// What a game may say about itself. Every member has a default.
struct ZOVKPopupHostSettings {
  /// Names the application's own data: letters, digits, dots, dashes, underscores. By default the
  /// program's name.
  std::string applicationId;
  /// Where the game's resources lie (absolute path); by default the program's own directory.
  /// The resource bundle "ZOVKPopupResource.bundle" is looked for there first, then beside the
  /// library.
  std::string resourceDirectory;
  /// The application's home directory; by default `$XDG_DATA_HOME/<applicationId>`.
  std::string dataDirectory;
  /// The helper program `zovkpopup-helper`; by default the one installed with the library.
  std::string helperPath;
  /// The X11 window of the game, 0 when it has none: popups cover it and give the focus back to it.
  std::uint64_t nativeWindow = 0;
  /// A PEM file (absolute path) with certificate authorities to trust beside the system's, for a
  /// popup service with a certificate of its own; by default none.
  std::string certificateAuthority;
  /// Takes the log lines, without line ends, instead of standard error. Called from any thread,
  /// also while other calls are under way; it must not call back into the library.
  std::function<void(std::string_view line)> logSink;
  /// How many megabytes (of 1,048,576 bytes) a page's process may take, 64 at least. It is looked
  /// at once a second; a process that has more is ended, and its page is loaded again.
  std::uint32_t pageMemory = 1024;
  /// How popups are drawn, in any case: "hardware", by the graphics processor; "software", without
  /// it; "plain", with the least memory, for pages that are opaque or stand still; "auto", the
  /// default, by the graphics processor where there is one; "look" is the same, but asks the
  /// graphics driver even where no device is seen. The player's environment variable
  /// `ZOVKPOPUP_DRAWING` goes before it. Hardware that fails is not tried again.
  std::string drawing;
  /// The game's window as text, where it is known to the display system: "x11:NUMBER", the same as
  /// `nativeWindow`, or "wayland:HANDLE", what the compositor's `zxdg_exporter` gave for it. Popups
  /// then stand over that window. By default what `nativeWindow` says.
  std::string gameWindow{};
  /// The kind of window that popups have, in any case: "auto", the default, stands over the game's
  /// window wherever the display lets it; "fullscreen" takes the whole screen, for games that have
  /// a screen to themselves. The player's environment variable `ZOVKPOPUP_WINDOW` goes before it.
  std::string popupWindow{};
  /// Gives the game's last frame, for the displays on which a popup hides the game: in kiosks,
  /// where no compositor blends windows, and where the game's window has no name on Wayland. It
  /// then lies beneath the page. Asked once when popups are about to cover the game and again after
  /// the popup has got another size, on the main thread; it must not call the library, nor throw.
  /// On other displays it is never asked. Without it what is behind a page is plain and dark.
  ZOVKPopupBackdrop backdrop{};
  /// Whether the helper program writes to its standard output, which is the game's, what pages tell
  /// their console. For tools.
  bool pageConsole = false;
  /// How many seconds popups stay ready to come up at once when nothing is shown. After that the
  /// helper gives up what it held ready for the next page, and ten minutes later it ends. The next
  /// popup brings it back, and so does a `havePopup` that is true, which is therefore best asked a
  /// second before.
  std::uint32_t readySeconds = 60;
};

}  // namespace zovk
