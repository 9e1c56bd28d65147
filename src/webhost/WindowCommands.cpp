#include "webhost/Commands.h"
#include "webhost/Host.h"
#include "webhost/Snapshot.h"
#include "webhost/UrlOpener.h"

namespace zovk {
namespace {

void createWindow(Host& host, const Arguments& arguments) {
  const Id id = arguments.id("window");
  const Id view = arguments.id("view");
  host.openWindow(id, view, arguments.frame("frame"));
}

void setWindowBackground(Host& host, const Arguments& arguments) {
  const GdkRGBA color = arguments.color("color");
  if (WindowHost* window = host.window(arguments.id("window"))) window->setBackground(color);
}

void showWindow(Host& host, const Arguments& arguments) {
  if (WindowHost* window = host.window(arguments.id("window"))) window->show();
}

void closeWindow(Host& host, const Arguments& arguments) {
  host.closeWindow(arguments.id("window"));
}

void afterPaint(const Host& host, Id windowId, const std::function<void()>& next) {
  WindowHost* window = host.window(windowId);
  window == nullptr ? next() : window->whenPainted(next);
}

void takeSnapshot(Host& host, const Arguments& arguments) {
  const Id id = arguments.id("id");
  const Id windowId = arguments.id("window");
  const auto finish = [&host, id, windowId, path = arguments.text("path")] {
    const WindowHost* window = host.window(windowId);
    const bool done =
        window != nullptr && window->isShown() && writeSnapshot(window->widget(), path);
    host.events()({{"type", "snapshot.done"}, {"id", id}, {"done", done}});
  };
  const auto afterPage = [&host, windowId, finish] { afterPaint(host, windowId, finish); };
  const WebViewHost* page = host.webViewIn(windowId);
  page == nullptr ? afterPage() : whenPagePainted(page->view(), afterPage);
}

void sync(Host& host, const Arguments& arguments) {
  const Id id = arguments.id("id");
  const auto finish = [&host, id] { host.events()({{"type", "synced"}, {"id", id}}); };
  afterPaint(host, arguments.id("window"), finish);
}

void pressPad(Host& host, const Arguments& arguments) {
  host.pressPad(arguments.text("press"), arguments.text("pressName"), arguments.text("leaveName"));
}

void resizeGame(Host& host, const Arguments& arguments) {
  host.game().setSize(arguments.frame("size"));
}

void noteKeyboardOfGame(Host& host, const Arguments& arguments) {
  host.game().setKeyboard(arguments.flag("key"));
}

void answerPing(const Host& host, const Arguments&) {
  host.events()({{"type", "pong"}});
}

void openAddress(Host& host, const Arguments& arguments) {
  const Id id = arguments.id("id");
  const std::string url = arguments.text("url");
  if (host.openLimit().take(std::chrono::steady_clock::now())) {
    return openUrl(id, url, host.events());
  }
  if (const auto line = host.openLimit().refusalLine()) sendLog(host.events(), *line);
  host.events()({{"type", "url.opened"}, {"id", id}, {"opened", false}});
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
  table["pad.press"] = pressPad;
  table["url.open"] = openAddress;
}

}  // namespace zovk
