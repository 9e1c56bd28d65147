#pragma once

namespace zovk {

/// How many windows stand on the screen, dialogs and menus of all programs included.
int windowsOnScreen();

}  // namespace zovk
