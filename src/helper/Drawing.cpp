#include "helper/Drawing.h"

#include <algorithm>
#include <optional>

#include <glib.h>

#include "helper/Renderer.h"

namespace zovk::helper {
namespace {

constexpr const char* kVariable = "ZOVKPOPUP_DRAWING";

bool says(const std::string& text, const char* word) {
  return g_ascii_strcasecmp(text.c_str(), word) == 0;
}

std::optional<Drawing> named(const std::string& text) {
  for (const Drawing drawing : {Drawing::kHardware, Drawing::kSoftware, Drawing::kPlain}) {
    if (says(text, nameOf(drawing))) return drawing;
  }
  return std::nullopt;
}

}  // namespace

std::string askedDrawing(const std::string& game) {
  const char* player = g_getenv(kVariable);
  return player != nullptr && *player != '\0' ? player : game;
}

DrawingChoice chooseDrawing(const DrawingWish& wish, const GraphicsFacts& facts) {
  DrawingChoice choice;
  const bool look = says(wish.asked, "look");
  if (const auto drawing = named(wish.asked)) {
    choice.drawing = *drawing;
  } else if (!wish.failedBefore && (look || facts.hasDevice())) {
    choice.renderer = wish.renderer.empty() ? facts.renderer() : wish.renderer;
    const bool hardware = !choice.renderer.empty() && !isSoftwareRenderer(choice.renderer);
    if (hardware) choice.drawing = Drawing::kHardware;
  }
  if (!named(wish.asked) && !look && !wish.asked.empty() && !says(wish.asked, "auto")) {
    choice.line = "helper: no way of drawing is called \"" + wish.asked + "\"";
  }
  if (wish.failedBefore && choice.drawing == Drawing::kHardware) {
    choice.drawing = Drawing::kSoftware;
    choice.line = "helper: drawn in software, since the helper before was lost";
  }
  return choice;
}

const char* nameOf(Drawing drawing) {
  if (drawing == Drawing::kHardware) return "hardware";
  return drawing == Drawing::kSoftware ? "software" : "plain";
}

void prepareDrawing(Drawing drawing) {
  if (drawing == Drawing::kHardware) return;
  g_setenv("GSK_RENDERER", "cairo", FALSE);
  // Where GL is software, pages painted by the processor take half the memory.
  g_setenv("WEBKIT_SKIA_ENABLE_CPU_RENDERING", "1", FALSE);
  // Otherwise software GL draws with all processors at once, and the game's frames wait.
  const std::string threads = std::to_string(std::max(1U, g_get_num_processors() / 2));
  g_setenv("LP_NUM_THREADS", threads.c_str(), FALSE);
}

}  // namespace zovk::helper
