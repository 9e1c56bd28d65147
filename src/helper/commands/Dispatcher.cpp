#include "helper/commands/Dispatcher.h"

#include <stdexcept>
#include <utility>

#include <boost/json/array.hpp>
#include <gtk/gtk.h>

#include "helper/Renderer.h"
#include "helper/layout/DesktopTheme.h"
#include "helper/page/UrlOpener.h"
#include "helper/window/ReceivedPicture.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

/// Returns the display systems to try, in order, as the toolkit takes them.
std::string displaysFor(const Greeting& greeting) {
  if (!greeting.display.empty()) return greeting.display;
  // The popup can stand in front of the game's X11 window only as an X11 window itself.
  if (greeting.nativeWindow != 0) return "x11,*";
  return greeting.waylandWindow.empty() ? "*" : "wayland,*";
}

/// The player's own wish goes before the game's.
std::string askedWindow(const Arguments& arguments) {
  const char* player = g_getenv("ZOVKPOPUP_WINDOW");
  if (player != nullptr && *player != '\0') return player;
  return arguments.textOr(member::kPopupWindow, "");
}

/// Throws for an unknown word.
bool isWholeScreen(const std::string& window) {
  if (g_ascii_strcasecmp(window.c_str(), "fullscreen") == 0) return true;
  if (window.empty() || g_ascii_strcasecmp(window.c_str(), "auto") == 0) return false;
  throw std::invalid_argument(window);
}

DrawingChoice drawingFor(const Greeting& greeting) {
  constexpr const char* kThisProgram = "/proc/self/exe";
  return chooseDrawing(greeting.drawing, {hasGraphicsDevice, [&greeting] {
                                            return rendererOf(kThisProgram, displaysFor(greeting));
                                          }});
}

bool startToolkit(const Greeting& greeting) {
  g_set_prgname(greeting.application.c_str());
  g_set_application_name(greeting.application.c_str());
  gdk_set_allowed_backends(displaysFor(greeting).c_str());
  return gtk_init_check() == TRUE;
}

void sendReady(const EventSink& events, const Program& program, const DrawingChoice& choice) {
  boost::json::array schemes;
  for (const std::string& scheme : openableSchemes()) schemes.emplace_back(scheme);
  events({{member::kType, event::kReady},
          {member::kVersion, kHelperProtocolVersion},
          {member::kScreen, program.screen()},
          {member::kSchemes, schemes},
          {member::kDrawing, nameOf(choice.drawing)},
          {member::kRenderer, choice.renderer}});
}

}  // namespace

Dispatcher::Dispatcher(EventSink events, Control control)
    : events_(std::move(events)), control_(std::move(control)) {
  addWindowCommands(table_);
  addViewCommands(table_);
  addLayoutCommands(table_);
  addWebCommands(table_);
  table_[command::kBackdrop] = [this](Program& program, const Arguments& arguments) {
    takeBackdrop(program, arguments);
  };
}

void Dispatcher::receive(const HelperMessage& message) {
  const std::string type(message.at(member::kType).as_string());
  try {
    carryOut(type, Arguments(message));
  } catch (const std::invalid_argument& error) {
    sendLog(events_, "helper: command \"" + type + "\" skipped: " + error.what());
  }
}

void Dispatcher::carryOut(const std::string& type, const Arguments& arguments) {
  if (!program_ && type == command::kHello) return greet(arguments);
  if (!program_) throw std::invalid_argument("no greeting");
  const auto command = table_.find(type);
  if (command == table_.end()) throw std::invalid_argument("unknown");
  command->second(*program_, arguments);
}

void Dispatcher::greet(const Arguments& arguments) {
  if (arguments.wholeNumber(member::kVersion) != kHelperProtocolVersion)
    return fail("other version");
  Greeting greeting = readGreeting(arguments);
  const std::string window = askedWindow(arguments);
  try {
    greeting.wholeScreen = isWholeScreen(window);
  } catch (const std::invalid_argument&) {
    sendLog(events_, "helper: no kind of window is called \"" + window + "\"");
  }
  start(greeting);
}

void Dispatcher::start(const Greeting& greeting) {
  const DrawingChoice choice = drawingFor(greeting);
  if (!choice.line.empty()) sendLog(events_, choice.line);
  prepareDrawing(choice.drawing);
  if (!startToolkit(greeting)) return fail("no display");
  followDesktopTheme();
  control_.pause();
  program_ = std::make_unique<Program>(greeting, events_, choice.drawing);
  program_->webViewFactory().whenReady([this, choice] {
    program_->prepareSpare();
    sendReady(events_, *program_, choice);
    program_->askForBackdropAhead();
    control_.resume();
  });
}

void Dispatcher::takeBackdrop(Program& program, const Arguments& arguments) const {
  const UniqueFd pixels = control_.takeFile ? control_.takeFile() : UniqueFd();
  const auto width = arguments.wholeNumber(member::kWidth);
  const auto height = arguments.wholeNumber(member::kHeight);
  program.takeBackdrop(pictureIn(pixels.get(), width, height));
}

void Dispatcher::fail(const std::string& reason) {
  events_({{member::kType, event::kFailed}, {member::kReason, reason}});
  control_.quit();
}

}  // namespace zovk::helper
