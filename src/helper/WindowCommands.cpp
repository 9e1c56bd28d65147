#include "helper/Commands.h"
#include "helper/Program.h"
#include "helper/Snapshot.h"
#include "helper/UrlOpener.h"

namespace zovk::helper {
namespace {

void createWindow(Program& program, const Arguments& arguments) {
  const Id id = arguments.id("window");
  const Id view = arguments.id("view");
  program.openWindow(id, view, arguments.frame("frame"));
}

void setWindowBackground(Program& program, const Arguments& arguments) {
  const GdkRGBA color = arguments.color("color");
  if (ToolkitWindow* window = program.window(arguments.id("window"))) window->setBackground(color);
}

void showWindow(Program& program, const Arguments& arguments) {
  if (ToolkitWindow* window = program.window(arguments.id("window"))) window->show();
}

void closeWindow(Program& program, const Arguments& arguments) {
  program.closeWindow(arguments.id("window"));
}

void afterPaint(const Program& program, Id windowId, const std::function<void()>& next) {
  ToolkitWindow* window = program.window(windowId);
  window == nullptr ? next() : window->whenPainted(next);
}

void takeSnapshot(Program& program, const Arguments& arguments) {
  const Id id = arguments.id("id");
  const Id windowId = arguments.id("window");
  const auto finish = [&program, id, windowId, path = arguments.text("path")] {
    const ToolkitWindow* window = program.window(windowId);
    const bool done =
        window != nullptr && window->isShown() && writeSnapshot(window->widget(), path);
    program.events()({{"type", "snapshot.done"}, {"id", id}, {"done", done}});
  };
  const auto afterPage = [&program, windowId, finish] { afterPaint(program, windowId, finish); };
  const ToolkitWebView* page = program.webViewIn(windowId);
  page == nullptr ? afterPage() : whenPagePainted(page->view(), afterPage);
}

void sync(Program& program, const Arguments& arguments) {
  const Id id = arguments.id("id");
  const auto finish = [&program, id] { program.events()({{"type", "synced"}, {"id", id}}); };
  afterPaint(program, arguments.id("window"), finish);
}

void pressPad(Program& program, const Arguments& arguments) {
  program.pressPad(arguments.text("press"), arguments.text("pressName"),
                   arguments.text("leaveName"));
}

void resizeGame(Program& program, const Arguments& arguments) {
  program.game().setSize(arguments.frame("size"));
}

void noteKeyboardOfGame(Program& program, const Arguments& arguments) {
  program.game().setKeyboard(arguments.flag("key"));
}

void restUntilNext(Program& program, const Arguments&) {
  program.rest();
}

void prepareNext(Program& program, const Arguments&) {
  program.prepareSpareWhenIdle();
}

void answerPing(const Program& program, const Arguments&) {
  program.events()({{"type", "pong"}});
}

void openAddress(Program& program, const Arguments& arguments) {
  const Id id = arguments.id("id");
  const std::string url = arguments.text("url");
  if (program.openLimit().take(std::chrono::steady_clock::now())) {
    return openUrl(id, url, program.events());
  }
  if (const auto line = program.openLimit().refusalLine()) sendLog(program.events(), *line);
  program.events()({{"type", "url.opened"}, {"id", id}, {"opened", false}});
}

}  // namespace

void addWindowCommands(CommandTable& table) {
  table["window.create"] = createWindow;
  table["window.background"] = setWindowBackground;
  table["window.show"] = showWindow;
  table["window.close"] = closeWindow;
  table["game.size"] = resizeGame;
  table["game.key"] = noteKeyboardOfGame;
  table["snapshot"] = takeSnapshot;
  table["sync"] = sync;
  table["ping"] = answerPing;
  table["rest"] = restUntilNext;
  table["prepare"] = prepareNext;
  table["pad.press"] = pressPad;
  table["url.open"] = openAddress;
}

}  // namespace zovk::helper
