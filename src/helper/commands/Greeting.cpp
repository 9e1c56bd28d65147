#include "helper/commands/Greeting.h"

#include "protocol/MessageNames.h"

namespace zovk::helper {

Greeting readGreeting(const Arguments& arguments) {
  Greeting greeting;
  greeting.application = arguments.text(member::kApplication);
  greeting.dataDirectory = arguments.text(member::kDataDirectory);
  greeting.nativeWindow = static_cast<unsigned long>(arguments.wholeNumber(member::kNativeWindow));
  greeting.developerTools = arguments.flag(member::kDeveloperTools);
  greeting.pageMemory = arguments.wholeNumber(member::kPageMemory);
  greeting.waylandWindow = arguments.textOr(member::kWaylandWindow, "");
  if (arguments.has(member::kGameSize)) greeting.gameSize = arguments.frame(member::kGameSize);
  if (arguments.has(member::kKey)) greeting.gameKey = arguments.flag(member::kKey);
  greeting.pageConsole = arguments.flagOr(member::kPageConsole, false);
  greeting.display = arguments.textOr(member::kDisplay, "");
  greeting.drawing.asked = askedDrawing(arguments.text(member::kDrawing));
  greeting.drawing.renderer = arguments.textOr(member::kRenderer, "");
  greeting.drawing.failedBefore = arguments.flag(member::kDrawingFailed);
  return greeting;
}

}  // namespace zovk::helper
