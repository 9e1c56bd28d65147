#pragma once

namespace zovk {

/// Returns how many windows are on the screen, including dialogs and menus of all programs.
int windowsOnScreen();

}  // namespace zovk
