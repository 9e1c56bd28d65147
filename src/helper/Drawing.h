#pragma once

#include <functional>
#include <string>

namespace zovk::helper {

/// The ways of drawing windows and pages.
enum class Drawing {
  kHardware,  ///< With the graphics processor.
  kSoftware,  ///< Without it; software GL composes see-through pages.
  kPlain,     ///< Without any GL and with the least memory. But when a see-through page repaints a
              ///< part of itself, the web engine blends that part over the old picture instead of
              ///< replacing it.
};

/// The facts known when the helper starts.
struct DrawingWish {
  std::string asked;  ///< The wish of the player, or else of the game, in upper or lower case.
                      ///< Empty for neither.
  bool failedBefore = false;  ///< The helper before this one was lost.
  std::string renderer{};     ///< As an earlier helper found it; empty if none looked.
};

/// The result of a wish.
struct DrawingChoice {
  Drawing drawing = Drawing::kSoftware;
  std::string renderer;  ///< The GL renderer, if it was asked for.
  std::string line;      ///< For the log; empty for no line.
};

/// The facts on which the choice depends.
struct GraphicsFacts {
  std::function<bool()> hasDevice;
  std::function<std::string()> renderer;
};

/// Returns the player's wish, the environment variable ZOVKPOPUP_DRAWING, or else the game's.
std::string askedDrawing(const std::string& game);

/// Chooses the way of drawing. "hardware", "software" and "plain" are used as asked. "look" asks
/// the driver. "auto" and an empty wish ask it if there is a graphics device. Hardware that failed
/// is not tried again.
DrawingChoice chooseDrawing(const DrawingWish& wish, const GraphicsFacts& facts);

/// Returns the name, as a wish spells it.
const char* nameOf(Drawing drawing);

/// Configures toolkit and web engine. Call it before either is started, and while no other thread
/// reads the environment.
void prepareDrawing(Drawing drawing);

}  // namespace zovk::helper
