#pragma once

namespace zovk::helper {

/// Asks sway, if it runs, to give the keyboard to this process's window. Sway gives it neither to a
/// window that appears over a full-screen one, nor to one that asks for it in the usual ways.
void askSwayForKeyboard();
bool isSwayRunning();

}  // namespace zovk::helper
