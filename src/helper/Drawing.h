#pragma once

#include <functional>
#include <string>

namespace zovk::helper {

/// How windows and pages are drawn.
enum class Drawing {
  kHardware,  ///< With the graphics processor.
  kSoftware,  ///< Without; pages that let the game through are put together by software GL.
  kPlain,     ///< Without any GL: with the least memory, but the engine blends what a see-through
              ///< page repaints over what was there, instead of taking its place.
};

/// What is known when the helper starts.
struct DrawingWish {
  std::string asked;          ///< By the player, or else by the game; any case. Empty for neither.
  bool failedBefore = false;  ///< The helper before this one was lost.
};

/// What came of a wish.
struct DrawingChoice {
  Drawing drawing = Drawing::kSoftware;
  std::string renderer;  ///< What draws for GL, where that was looked at.
  std::string line;      ///< For the log; empty when there is nothing to say.
};

/// What the choice depends on.
struct GraphicsFacts {
  std::function<bool()> hasDevice;
  std::function<std::string()> renderer;
};

/// The player's own wish goes before the game's: the environment variable ZOVKPOPUP_DRAWING.
std::string askedDrawing(const std::string& game);

/// "hardware", "software" and "plain" are taken at their word; "look" asks the driver; "auto" and
/// nothing ask it where there is a graphics device. Hardware that failed is not tried again.
DrawingChoice chooseDrawing(const DrawingWish& wish, const GraphicsFacts& facts);

/// As the wish is written.
const char* nameOf(Drawing drawing);

/// Tells toolkit and engine. Before either is started, and while no other thread reads the
/// environment.
void prepareDrawing(Drawing drawing);

}  // namespace zovk::helper
