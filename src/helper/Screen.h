#pragma once

#include "helper/Arguments.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

class GameWindow;

/// The monitor that most of the game stands on, or else the first one; null when there is none.
GObjectPtr<GdkMonitor> monitorOf(const GameWindow& game);
/// That monitor's part of the whole screen; empty when there is none.
Frame monitorFrame(const GameWindow& game);
/// What a popup covers: the game's window where that is known, else the monitor.
Frame coveredFrame(const GameWindow& game);

}  // namespace zovk::helper
