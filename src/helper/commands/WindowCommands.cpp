#include "helper/Program.h"
#include "helper/commands/Commands.h"
#include "helper/page/UrlOpener.h"
#include "helper/window/Snapshot.h"
#include "protocol/MessageNames.h"

namespace zovk::helper {
namespace {

void createWindow(Program& program, const Arguments& arguments) {
  const Id id = arguments.id(member::kWindow);
  const Id view = arguments.id(member::kView);
  program.openWindow(id, view, arguments.frame(member::kFrame));
}

void setWindowBackground(Program& program, const Arguments& arguments) {
  const GdkRGBA color = arguments.color(member::kColor);
  if (ToolkitWindow* window = program.window(arguments.id(member::kWindow)))
    window->setBackground(color);
}

void showWindow(Program& program, const Arguments& arguments) {
  if (ToolkitWindow* window = program.window(arguments.id(member::kWindow))) window->show();
}

void closeWindow(Program& program, const Arguments& arguments) {
  program.closeWindow(arguments.id(member::kWindow));
}

void afterPaint(const Program& program, Id windowId, const std::function<void()>& next) {
  ToolkitWindow* window = program.window(windowId);
  if (window == nullptr) return next();
  window->whenPainted(next);
}

void takeSnapshot(Program& program, const Arguments& arguments) {
  const Id id = arguments.id(member::kId);
  const Id windowId = arguments.id(member::kWindow);
  const auto finish = [&program, id, windowId, path = arguments.text(member::kPath)] {
    const ToolkitWindow* window = program.window(windowId);
    const bool done =
        window != nullptr && window->isShown() && writeSnapshot(window->widget(), path);
    program.events()(
        {{member::kType, event::kSnapshotDone}, {member::kId, id}, {member::kDone, done}});
  };
  const auto afterPage = [&program, windowId, finish] { afterPaint(program, windowId, finish); };
  const ToolkitWebView* page = program.webViewIn(windowId);
  if (page == nullptr) return afterPage();
  whenPagePainted(page->view(), afterPage);
}

void sync(Program& program, const Arguments& arguments) {
  const Id id = arguments.id(member::kId);
  const auto finish = [&program, id] {
    program.events()({{member::kType, event::kSynced}, {member::kId, id}});
  };
  afterPaint(program, arguments.id(member::kWindow), finish);
}

void pressPad(Program& program, const Arguments& arguments) {
  program.pressPad(arguments.text(member::kPress), arguments.text(member::kPressName),
                   arguments.text(member::kLeaveName));
}

void resizeGame(Program& program, const Arguments& arguments) {
  program.game().setSize(arguments.frame(member::kSize));
}

void noteKeyboardOfGame(Program& program, const Arguments& arguments) {
  program.game().setKeyboard(arguments.flag(member::kKey));
}

void answerPing(const Program& program, const Arguments&) {
  program.events()({{member::kType, event::kPong}});
}

void openAddress(Program& program, const Arguments& arguments) {
  const Id id = arguments.id(member::kId);
  const std::string url = arguments.text(member::kUrl);
  if (program.openLimit().take(std::chrono::steady_clock::now())) {
    return openUrl(id, url, program.events());
  }
  if (const auto line = program.openLimit().refusalLine()) sendLog(program.events(), *line);
  program.events()(
      {{member::kType, event::kUrlOpened}, {member::kId, id}, {member::kOpened, false}});
}

}  // namespace

void addWindowCommands(CommandTable& table) {
  table[command::kWindowCreate] = createWindow;
  table[command::kWindowBackground] = setWindowBackground;
  table[command::kWindowShow] = showWindow;
  table[command::kWindowClose] = closeWindow;
  table[command::kGameSize] = resizeGame;
  table[command::kGameKey] = noteKeyboardOfGame;
  table[command::kSnapshot] = takeSnapshot;
  table[command::kSync] = sync;
  table[command::kPing] = answerPing;
  table[command::kPadPress] = pressPad;
  table[command::kUrlOpen] = openAddress;
}

}  // namespace zovk::helper
