#pragma once

namespace zovk::helper {

/// Asks sway, if it runs, to bring this process's window to the current work space and to give it
/// the keyboard. Sway gives the keyboard neither to a window that appears over a full-screen one,
/// nor to one that asks for it in the usual ways.
void askSwayForKeyboard();
bool isSwayRunning();

}  // namespace zovk::helper
