#pragma once

namespace zovk::helper {

/// Asks sway, where it runs, to give the keyboard to the window of this process. Sway gives it to
/// no window that comes up over a full-screen one, nor to one that asks for it by the usual ways.
void askSwayForKeyboard();
bool isSwayRunning();

}  // namespace zovk::helper
