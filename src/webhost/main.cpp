// The helper that shows popups for a game. It is started by the library, with one end of a socket
// pair as descriptor 3, and ends when that socket closes.

#include <cstdio>
#include <memory>
#include <string_view>

#include <glib.h>
#include <sys/socket.h>
#include <unistd.h>

#include "webhost/Connection.h"
#include "webhost/Dispatcher.h"
#include "webhost/MemoryRank.h"
#include "webhost/ParentWatch.h"
#include "webhost/Renderer.h"

namespace {

constexpr int kBehindTheGame = 10;  // added to the nice value

bool hasSocket() {
  int type = 0;
  socklen_t size = sizeof type;
  return getsockopt(zovk::kWebHostDescriptor, SOL_SOCKET, SO_TYPE, &type, &size) == 0;
}

void run() {
  const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop(
      g_main_loop_new(nullptr, FALSE), &g_main_loop_unref);
  const auto quit = [&loop] { g_main_loop_quit(loop.get()); };
  zovk::Dispatcher* receiver = nullptr;
  zovk::Connection connection(
      zovk::kWebHostDescriptor,
      [&receiver](const zovk::WebHostMessage& message) { receiver->receive(message); }, quit);
  // After the connection, so that it goes before: windows and pages send something at their end.
  zovk::Dispatcher dispatcher(
      [&connection](const zovk::WebHostMessage& event) { connection.send(event); },
      zovk::Control{[&connection] { connection.pause(); }, [&connection] { connection.resume(); },
                    quit, [&connection] { return connection.takeFile(); }});
  receiver = &dispatcher;
  const zovk::ParentWatch parent(zovk::kWebHostDescriptor, quit);
  g_main_loop_run(loop.get());
  connection.drain();
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 3 && std::string_view(arguments[1]) == zovk::kWriteRenderer) {
    return zovk::writeRenderer(arguments[2]);
  }
  if (!hasSocket()) {
    std::fputs("zovkpopup-webhost is started by a game, not by hand\n", stderr);
    return 2;
  }
  zovk::goFirstWhenMemoryRunsOut();
  // Where processors are few, the game's frames come before the pages. WebKit inherits it.
  nice(kBehindTheGame);
  run();
  return 0;
}
