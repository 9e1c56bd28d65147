#pragma once

namespace zovk {

class PixelWatch;

/// Processor seconds so far, by who took them. Those of the pixel's watch are nobody's.
struct ProcessorTime {
  double game = 0;
  double helper = 0;
  double web = 0;     ///< The web engine's processes.
  double screen = 0;  ///< The X server.

  /// Returns the time so far. This process is the game.
  static ProcessorTime now(const PixelWatch& watch);
  ProcessorTime operator-(const ProcessorTime& earlier) const;
};

}  // namespace zovk
