#include <array>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "PopupScreen.h"

namespace zovk {
namespace {

/// A process that starts a helper and then does nothing, as a game that hangs.
struct Starter {
  pid_t pid = -1;
  pid_t helper = -1;

  /// `ends` are the ends of a socket pair, the game's and the helper's.
  explicit Starter(const std::array<int, 2>& ends) {
    std::array<int, 2> pipeEnds{};
    if (pipe(pipeEnds.data()) != 0) return;
    pid = fork();
    if (pid == 0) {
      const pid_t started = spawnHelper(ends[1]);
      close(ends[1]);
      if (write(pipeEnds[1], &started, sizeof started) > 0) pause();
      _exit(0);
    }
    if (read(pipeEnds[0], &helper, sizeof helper) != sizeof helper) helper = -1;
    close(pipeEnds[0]);
    close(pipeEnds[1]);
    close(ends[1]);
  }

  void die() const {
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
  }
};

std::array<int, 2> socketPair() {
  std::array<int, 2> ends{};
  EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), 0);
  return ends;
}

void command(int socket, const HelperMessage& message) {
  const std::string frame = encodeFrame(message).value();
  ASSERT_EQ(send(socket, frame.data(), frame.size(), 0), static_cast<ssize_t>(frame.size()));
}

void greet(int socket) {
  command(socket, {{"type", "hello"},
                   {"version", 1},
                   {"application", "org.example.helper-test"},
                   {"dataDirectory", testing::TempDir()},
                   {"nativeWindow", 0},
                   {"developerTools", false},
                   {"pageMemory", 1024},
                   {"drawing", ""},
                   {"drawingFailed", false}});
  char first = 0;
  ASSERT_EQ(recv(socket, &first, 1, 0), 1);  // the beginning of `ready`
}

TEST(HelperLifetime, EndsWhenTheSocketCloses) {
  HelperUnderTest helper;
  helper.closeSocket();
  EXPECT_EQ(helper.awaitEnd(), 0);
}

TEST(HelperLifetime, EndsWhenTheSocketClosesWhileAPageIsShown) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  helper.closeSocket();
  EXPECT_EQ(helper.awaitEnd(), 0);
}

TEST(HelperLifetime, EndsWhenTheGameIsKilled) {
  const std::array<int, 2> ends = socketPair();
  const Starter game(ends);
  ASSERT_GT(game.helper, 0);
  greet(ends[0]);
  close(ends[0]);  // the game holds the only other copy
  game.die();
  EXPECT_TRUE(endsSoon(game.helper));
}

TEST(HelperLifetime, EndsWhenTheGameIsKilledButItsSocketIsHeldElsewhere) {
  const std::array<int, 2> ends = socketPair();
  const Starter game(ends);
  ASSERT_GT(game.helper, 0);
  greet(ends[0]);
  game.die();
  EXPECT_TRUE(endsSoon(game.helper));
  close(ends[0]);
}

/// Has the helper read a layout that never comes to an end; it does nothing else from then on.
class EndlessLayout {
 public:
  explicit EndlessLayout(int socket) {
    const std::filesystem::path file = directory_.path() / "Endless.ui";
    EXPECT_EQ(mkfifo(file.c_str(), 0600), 0);
    command(socket, {{"type", "layout.load"},
                     {"layout", 1},
                     {"view", 2},
                     {"bundle", directory_.path().string()},
                     {"name", "Endless"}});
    writer_ = open(file.c_str(), O_WRONLY | O_CLOEXEC);  // waits for the reader
  }
  ~EndlessLayout() { close(writer_); }
  EndlessLayout(const EndlessLayout&) = delete;
  EndlessLayout& operator=(const EndlessLayout&) = delete;

 private:
  ScratchDirectory directory_;
  int writer_ = -1;
};

TEST(HelperLifetime, EndsWithTheGameHoweverBusyItIs) {
  const std::array<int, 2> ends = socketPair();
  const Starter game(ends);
  ASSERT_GT(game.helper, 0);
  greet(ends[0]);
  const EndlessLayout layout(ends[0]);
  game.die();
  EXPECT_TRUE(endsSoon(game.helper));
  close(ends[0]);
}

TEST(HelperLifetime, EndsWithItsSocketHoweverBusyItIs) {
  const std::array<int, 2> ends = socketPair();
  const Starter game(ends);
  ASSERT_GT(game.helper, 0);
  greet(ends[0]);
  const EndlessLayout layout(ends[0]);
  shutdown(ends[0], SHUT_RDWR);  // for the game's copy of it, too
  EXPECT_TRUE(endsSoon(game.helper));
  close(ends[0]);
  game.die();
}

TEST(HelperLifetime, EndsInOrderWithAPopupOnScreenWhoseGameIsGone) {
  ASSERT_EQ(prctl(PR_SET_CHILD_SUBREAPER, 1), 0);  // to hear how the helper ended
  const std::array<int, 2> ends = socketPair();
  const Starter game(ends);
  ASSERT_GT(game.helper, 0);
  greet(ends[0]);
  command(ends[0],
          {{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 300, 200}}});
  command(ends[0], {{"type", "window.show"}, {"window", 1}});
  char next = 0;
  ASSERT_EQ(recv(ends[0], &next, 1, 0), 1);
  game.die();
  int status = -1;
  EXPECT_EQ(waitpid(game.helper, &status, 0), game.helper);
  EXPECT_EQ(status, 0);
  close(ends[0]);
}

TEST(HelperLifetime, IgnoresTheWishOfTheWindowManagerToClose) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  helper.await("window.key", {{"window", 1}, {"key", true}});
  ASSERT_EQ(runProgram({"xdotool", "key", "alt+F4"}), 0);
  screen.evaluate("1");
  const std::string path = (helper.directory() / "still.png").string();
  helper.send({{"type", "snapshot"}, {"id", 1}, {"window", 1}, {"path", path}});
  helper.await("snapshot.done", {{"id", 1}, {"done", true}});
  EXPECT_EQ(screen.evaluate("document.title"), "Plain");
}

TEST(HelperLifetime, SurvivesWindowsThatCloseBeforeTheyAreSeen) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.createWindow();
  helper.send({{"type", "window.close"}, {"window", 1}});
  for (int window = 2; window < 8; ++window) {
    helper.send({{"type", "window.create"},
                 {"window", window},
                 {"view", window},
                 {"frame", {0, 0, 300, 200}}});
    helper.send({{"type", "window.show"}, {"window", window}});
    helper.send({{"type", "window.close"}, {"window", window}});
  }
  helper.send({{"type", "window.create"}, {"window", 8}, {"view", 8}, {"frame", {0, 0, 300, 200}}});
  helper.send({{"type", "window.show"}, {"window", 8}});
  helper.sync(8);
  helper.await("window.size", {{"window", 8}, {"width", 300}, {"height", 200}});
}

/// Threads of the helper that serve a connection to another of its processes.
int connectionThreads(pid_t pid) {
  int count = 0;
  const std::string folder = "/proc/" + std::to_string(pid) + "/task";
  for (const auto& thread : std::filesystem::directory_iterator(folder)) {
    std::ifstream file(thread.path() / "comm");
    std::string name;
    std::getline(file, name);
    if (name == "ReceiveQueue") ++count;
  }
  return count;
}

TEST(HelperLifetime, LeavesNothingOfManyPagesBehind) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  for (int i = 0; i < 20; ++i) {
    screen.createWebView();
    screen.loadPage("plain.html");
    helper.send({{"type", "web.close"}, {"view", PopupScreen::kWebView}});
  }
  helper.sync();
  // The network's connection, the spare page's, and those that are just ending.
  EXPECT_LE(connectionThreads(helper.pid()), 4);
}

TEST(HelperLifetime, ShowsManyPopupsAfterAnother) {
  HelperUnderTest helper;
  for (int i = 0; i < 5; ++i) {
    helper.send({{"type", "window.create"},
                 {"window", 10 + i},
                 {"view", 100 + i},
                 {"frame", {0, 0, 300, 200}}});
    helper.send({{"type", "web.create"},
                 {"view", 200 + i},
                 {"handlers", {"ZOVKPopup"}},
                 {"inlineMedia", true},
                 {"mobile", true},
                 {"bounces", true},
                 {"scrollIndicator", false},
                 {"adjustInset", false},
                 {"opaque", false}});
    helper.send({{"type", "view.add"}, {"view", 100 + i}, {"child", 200 + i}});
    helper.send({{"type", "window.show"}, {"window", 10 + i}});
    helper.send({{"type", "web.evaluate"}, {"view", 200 + i}, {"id", i + 1}, {"script", "5"}});
    EXPECT_EQ(helper.await("web.evaluated", {{"id", i + 1}}).at("value"), 5);
    helper.send({{"type", "window.close"}, {"window", 10 + i}});
  }
  helper.sync();
}

}  // namespace
}  // namespace zovk
