#pragma once

#include "helper/Arguments.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

class GameWindow;

/// Returns the monitor with the largest part of the game, or else the first one; null if there is
/// none.
GObjectPtr<GdkMonitor> monitorOf(const GameWindow& game);
/// Returns that monitor's part of the whole screen; empty if there is none.
Frame monitorFrame(const GameWindow& game);
/// Returns the area that a popup covers: the game's window if it is known, else the monitor.
Frame coveredFrame(const GameWindow& game);

}  // namespace zovk::helper
