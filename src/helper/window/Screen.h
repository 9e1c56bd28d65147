#pragma once

#include "helper/GObjectPtr.h"
#include "helper/commands/Arguments.h"

namespace zovk::helper {

class GameWindow;

/// Returns the monitor with the largest part of `frame`, or else the nearest one; the first one for
/// an empty frame. Null if there is none.
GObjectPtr<GdkMonitor> monitorNear(const Frame& frame);
/// Returns whether a monitor shows any part of `frame`. Some parts of a screen belong to none.
bool isOnMonitor(const Frame& frame);
/// Returns the monitor of the game; null if there is none.
GObjectPtr<GdkMonitor> monitorOf(const GameWindow& game);
/// Returns that monitor's part of the whole screen; empty if there is none.
Frame monitorFrame(const GameWindow& game);
/// Returns the area that a popup covers: the game's window if it is known, else the monitor.
Frame coveredFrame(const GameWindow& game);

}  // namespace zovk::helper
