// The helper that shows popups for a game. It is started by the library, with one end of a socket
// pair as descriptor 3, and ends when that socket closes.

#include <cstdio>
#include <memory>
#include <string_view>

#include <glib.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "helper/IdleMemory.h"
#include "helper/MemoryRank.h"
#include "helper/ParentWatch.h"
#include "helper/Renderer.h"
#include "helper/commands/Connection.h"
#include "helper/commands/Dispatcher.h"
#include "helper/page/ScriptSyntax.h"
#include "helper/window/PictureMemory.h"

namespace {

constexpr int kBehindTheGame = 10;  // added to the nice value

bool hasSocket() {
  int type = 0;
  socklen_t size = sizeof type;
  return getsockopt(zovk::kHelperDescriptor, SOL_SOCKET, SO_TYPE, &type, &size) == 0;
}

bool isReadable(int socket) {
  pollfd waiting{socket, POLLIN, 0};
  return poll(&waiting, 1, 0) > 0;
}

void run() {
  const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop(
      g_main_loop_new(nullptr, FALSE), &g_main_loop_unref);
  const auto quit = [&loop] { g_main_loop_quit(loop.get()); };
  zovk::helper::Dispatcher* receiver = nullptr;
  zovk::helper::Connection connection(
      zovk::kHelperDescriptor,
      [&receiver](const zovk::HelperMessage& message) { receiver->receive(message); }, quit);
  // After the connection, so that it goes before: windows and pages send something at their end.
  zovk::helper::Dispatcher dispatcher(
      [&connection](const zovk::HelperMessage& event) { connection.send(event); },
      zovk::helper::Control{[&connection] { connection.pause(); },
                            [&connection] { connection.resume(); }, quit,
                            [&connection] { return connection.takeFile(); }});
  receiver = &dispatcher;
  const zovk::helper::ParentWatch parent(zovk::kHelperDescriptor, quit);
  // At rest the game sends no greeting, and starting has left much in memory.
  if (!isReadable(zovk::kHelperDescriptor)) zovk::helper::giveIdleMemoryBack();
  g_main_loop_run(loop.get());
  connection.drain();
}

}  // namespace

int main(int count, char** arguments) {
  if (count == 3 && std::string_view(arguments[1]) == zovk::helper::kWriteRenderer) {
    return zovk::helper::writeRenderer(arguments[2]);
  }
  if (count == 4 && std::string_view(arguments[1]) == zovk::helper::kCheckScripts) {
    return zovk::helper::checkScripts(arguments[2], arguments[3]);
  }
  if (!hasSocket()) {
    std::fputs("zovkpopup-helper is started by a game, not by hand\n", stderr);
    return 2;
  }
  zovk::helper::goFirstWhenMemoryRunsOut();
  zovk::helper::PictureMemory::keepFreed();
  // Where processors are few, the game's frames come before the pages. WebKit inherits it.
  nice(kBehindTheGame);
  run();
  return 0;
}
