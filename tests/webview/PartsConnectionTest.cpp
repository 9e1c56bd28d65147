// The helper's end of the socket, with a game that reads slowly or not at all.
#include <algorithm>
#include <array>
#include <cstring>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "helper/commands/Connection.h"
#include "helper/page/PageLog.h"

namespace zovk::helper {
namespace {

constexpr std::size_t kMebibyte = 1024 * 1024;

class SlowGame : public testing::Test {
 protected:
  SlowGame() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    game_ = ends[1];
    connection_ = std::make_unique<Connection>(
        ends[0], [](const HelperMessage&) {}, [this] { ended_ = true; });
  }
  ~SlowGame() override {
    connection_.reset();
    close(game_);
  }

  void post(std::size_t bytes) {
    connection_->send({{"type", "web.message"}, {"body", std::string(bytes, 'x')}});
  }
  /// With a part of a frame.
  void sendFiles(const std::vector<int>& files) const {
    char byte = 1;
    iovec part{&byte, 1};
    std::vector<char> control(CMSG_SPACE(files.size() * sizeof(int)));
    msghdr sent{};
    sent.msg_iov = &part;
    sent.msg_iovlen = 1;
    sent.msg_control = control.data();
    sent.msg_controllen = control.size();
    cmsghdr* const header = CMSG_FIRSTHDR(&sent);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(files.size() * sizeof(int));
    std::memcpy(CMSG_DATA(header), files.data(), files.size() * sizeof(int));
    ASSERT_EQ(sendmsg(game_, &sent, 0), 1);
  }
  void sendOther(const char* type) { connection_->send({{"type", type}, {"more", 1}}); }

  /// The game reads all there is, as the helper's loop goes round.
  std::vector<HelperMessage> readAll() {
    std::vector<HelperMessage> messages;
    std::array<char, 65536> bytes{};
    while (true) {
      const ssize_t count = recv(game_, bytes.data(), bytes.size(), MSG_DONTWAIT);
      if (count > 0) decoder_.feed({bytes.data(), static_cast<std::size_t>(count)});
      while (auto message = decoder_.next()) messages.push_back(std::move(*message));
      const bool turned = g_main_context_iteration(nullptr, FALSE) == TRUE;
      if (count <= 0 && !turned) return messages;
    }
  }
  static std::vector<std::string> typesOf(const std::vector<HelperMessage>& messages) {
    std::vector<std::string> types;
    for (const HelperMessage& message : messages) {
      types.emplace_back(message.at("type").as_string());
    }
    return types;
  }

  int game_ = -1;
  bool ended_ = false;
  FrameDecoder decoder_;
  std::unique_ptr<Connection> connection_;
};

TEST_F(SlowGame, SendsFourFilesAheadOfTheirFramesAtMost) {
  std::array<int, 2> pipe{};
  ASSERT_EQ(pipe2(pipe.data(), O_CLOEXEC), 0);
  const std::vector<int> files(6, pipe[1]);
  for (int i = 0; i < 2; ++i) sendFiles(files);
  close(pipe[1]);
  readAll();
  int kept = 0;
  while (const UniqueFd file = connection_->takeFile()) {
    EXPECT_NE(fcntl(file.get(), F_GETFD) & FD_CLOEXEC, 0);
    ++kept;
  }
  EXPECT_EQ(kept, 4);
  // All others are closed: nobody can write any more.
  char byte = 0;
  EXPECT_EQ(read(pipe[0], &byte, 1), 0);
  close(pipe[0]);
}

TEST_F(SlowGame, GetsEverythingInOrderOnceItReads) {
  std::vector<std::string> sent;
  for (int i = 0; i < 20; ++i) {
    post(100'000);
    sendOther("action");
    sent.insert(sent.end(), {"web.message", "action"});
  }
  EXPECT_GT(connection_->waiting(), 0U) << "more than a socket takes";
  EXPECT_EQ(typesOf(readAll()), sent);
  EXPECT_EQ(connection_->waiting(), 0U);
}

TEST_F(SlowGame, IsNotMadeLaterByAPageThatFloods) {
  for (int i = 0; i < 1000; ++i) post(kMebibyte / 4);
  EXPECT_LT(connection_->waiting(), 5 * kMebibyte) << "of 250 that were posted";
  EXPECT_FALSE(ended_);
}

TEST_F(SlowGame, StillHearsOfEverythingElseInAFlood) {
  for (int i = 0; i < 100; ++i) post(kMebibyte / 4);
  const std::vector<std::string> kept = {"action", "web.policy", "web.finished", "window.size",
                                         "web.evaluated"};
  for (const std::string& type : kept) sendOther(type.c_str());
  sendOther("web.window");
  std::vector<std::string> types = typesOf(readAll());
  std::erase(types, "web.message");
  std::erase(types, "log");
  EXPECT_EQ(types, kept);
}

TEST_F(SlowGame, GetsOneLineAndACountOfWhatWasLeftOut) {
  for (int i = 0; i < 1000; ++i) post(kMebibyte / 4);
  int messages = 0;
  std::vector<std::string> lines;
  for (const HelperMessage& message : readAll()) {
    if (message.at("type") == "web.message") ++messages;
    if (message.at("type") == "log") lines.emplace_back(message.at("line").as_string());
  }
  const std::string line = "helper: the game is late, a page's message was left out";
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_EQ(lines[0], line);
  EXPECT_EQ(lines[1],
            line + " (" + std::to_string(1000 - messages - 2) + " more such lines held back)");
}

TEST_F(SlowGame, HearsThePageAgainOnceItHasCaughtUp) {
  for (int i = 0; i < 100; ++i) post(kMebibyte / 4);
  readAll();
  post(1);
  EXPECT_EQ(typesOf(readAll()), std::vector<std::string>{"web.message"});
}

TEST_F(SlowGame, IsGivenUpWhenTwoLongestFramesWait) {
  const HelperMessage longest{{"type", "web.evaluated"},
                              {"value", std::string(60 * kMebibyte, 'x')}};
  connection_->send(longest);
  connection_->send(longest);
  EXPECT_FALSE(ended_);
  connection_->send(longest);
  EXPECT_TRUE(ended_);
}

/// A helper whose commands take long, and what happened in its loop.
class BusyHelper : public testing::Test {
 protected:
  BusyHelper() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    game_ = ends[1];
    connection_ = std::make_unique<Connection>(
        ends[0], [this](const HelperMessage& command) { work(command); }, [] {});
  }
  ~BusyHelper() override {
    connection_.reset();
    close(game_);
  }

  void send(const std::string& type) const {
    const std::string frame = *encodeFrame({{"type", type}});
    ASSERT_EQ(::send(game_, frame.data(), frame.size(), 0), static_cast<ssize_t>(frame.size()));
  }
  void work(const HelperMessage& command) {
    const std::string type(command.at("type").as_string());
    log_.push_back(type);
    const gint64 end = g_get_monotonic_time() + (type == "long" ? 5000 : 0);
    while (g_get_monotonic_time() < end) {
    }
    if (type == "pausing") connection_->pause();
  }
  void runUntil(std::size_t lines) const {
    while (log_.size() < lines) g_main_context_iteration(nullptr, TRUE);
  }
  /// Something else that the loop has to do as soon as it can.
  void wantTheLoop() {
    other_ = SourceGuard(g_idle_add_full(
        G_PRIORITY_DEFAULT,
        [](gpointer self) -> gboolean {
          static_cast<BusyHelper*>(self)->log_.emplace_back("other");
          return G_SOURCE_CONTINUE;
        },
        this, nullptr));
  }

  int game_ = -1;
  std::vector<std::string> log_;
  SourceGuard other_;
  std::unique_ptr<Connection> connection_;
};

TEST_F(BusyHelper, LooksAtOtherThingsBetweenCommandsThatTakeLong) {
  for (int i = 0; i < 3; ++i) send("long");
  runUntil(1);
  wantTheLoop();
  runUntil(6);
  EXPECT_EQ(log_[0], "long");
  const auto second = std::find(log_.begin() + 1, log_.end(), "long");
  ASSERT_NE(second, log_.end());
  EXPECT_EQ(*(second + 1), "other");
}

TEST_F(BusyHelper, CarriesOutShortCommandsInOneGo) {
  for (int i = 0; i < 3; ++i) send("short");
  wantTheLoop();
  runUntil(5);
  const auto first = std::find(log_.begin(), log_.end(), "short");
  ASSERT_GE(log_.end() - first, 3);
  EXPECT_EQ(*(first + 1), "short");
  EXPECT_EQ(*(first + 2), "short");
}

TEST_F(BusyHelper, KeepsWhatWasReadWhileItPauses) {
  send("pausing");
  send("after");
  runUntil(1);
  while (g_main_context_iteration(nullptr, FALSE) == TRUE) {
  }
  EXPECT_EQ(log_, std::vector<std::string>{"pausing"});
  connection_->resume();
  runUntil(2);
  EXPECT_EQ(log_[1], "after");
  send("later");
  runUntil(3);
  EXPECT_EQ(log_[2], "later");
}

class LinesOfPages : public testing::Test {
 protected:
  EventSink sink() {
    return
        [this](const HelperMessage& event) { lines_.emplace_back(event.at("line").as_string()); };
  }
  std::vector<std::string> lines_;
};

TEST_F(LinesOfPages, AreOneAtOnceAndOneWithTheRestASecondLater) {
  PageLog log(sink());
  for (int i = 0; i < 5; ++i) log.write("bad");
  EXPECT_EQ(lines_, std::vector<std::string>{"bad"});
  while (lines_.size() < 2) g_main_context_iteration(nullptr, TRUE);
  EXPECT_EQ(lines_[1], "bad (3 more such lines held back)");
}

TEST_F(LinesOfPages, AreAllCountedWhenTheirPageGoes) {
  {
    PageLog log(sink(), [] { return 0.0; });
    for (int i = 0; i < 3; ++i) log.write("bad");
  }
  EXPECT_EQ(lines_, (std::vector<std::string>{"bad", "bad (1 more such lines held back)"}));
}

/// A game whose commands come while the helper carries out the first of them.
class GoingOn : public testing::Test {
 protected:
  GoingOn() {
    std::array<int, 2> ends{};
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends.data()), 0);
    game_ = UniqueFd(ends[1]);
    connection_ = std::make_unique<Connection>(
        ends[0],
        [this](const HelperMessage& command) {
          received_.emplace_back(command.at("type").as_string());
          if (received_.size() == 1) duringTheFirst_();
        },
        [this] { ended_ = true; });
  }
  void command(const char* type, int count = 1) const {
    std::string frames;
    for (int i = 0; i < count; ++i) frames += *encodeFrame({{"type", type}, {"view", 2}});
    ASSERT_EQ(write(game_.get(), frames.data(), frames.size()), ssize_t(frames.size()));
  }
  void runUntilReceived(std::size_t count) const {
    while (received_.size() < count && !ended_) g_main_context_iteration(nullptr, TRUE);
  }

  UniqueFd game_;
  std::function<void()> duringTheFirst_ = [] {};
  std::vector<std::string> received_;
  bool ended_ = false;
  std::unique_ptr<Connection> connection_;
};

TEST_F(GoingOn, HasThePageLoadedBeforeTheWidgetsThatWaitAlready) {
  duringTheFirst_ = [this] { command("web.load"); };
  command("web.create");
  command("view.add");
  command("view.pinTop");
  runUntilReceived(4);
  EXPECT_EQ(received_,
            (std::vector<std::string>{"web.create", "web.load", "view.add", "view.pinTop"}));
}

TEST_F(GoingOn, IsReadAheadByThreeHundredCommandsAtMost) {
  duringTheFirst_ = [this] { command("web.load"); };
  command("web.create");
  command("view.add", 300);
  runUntilReceived(302);
  EXPECT_NE(received_[1], "web.load");
  EXPECT_NE(std::find(received_.begin(), received_.end(), "web.load"), received_.end());
}

TEST_F(GoingOn, IsHeardToTheEndWhenItLeaves) {
  duringTheFirst_ = [this] { game_ = UniqueFd(); };
  for (const char* type : {"view.add", "view.pinTop", "view.hidden"}) command(type);
  while (!ended_) g_main_context_iteration(nullptr, TRUE);
  EXPECT_EQ(received_, (std::vector<std::string>{"view.add", "view.pinTop", "view.hidden"}));
}

TEST_F(GoingOn, IsNotReadWhileTheHelperPauses) {
  duringTheFirst_ = [this] {
    connection_->pause();
    command("web.load");
  };
  command("web.create");
  command("view.add");
  runUntilReceived(1);
  while (g_main_context_iteration(nullptr, FALSE) == TRUE) {
  }
  EXPECT_EQ(received_, std::vector<std::string>{"web.create"});
  connection_->resume();
  runUntilReceived(3);
  EXPECT_EQ(received_, (std::vector<std::string>{"web.create", "view.add", "web.load"}));
}

}  // namespace
}  // namespace zovk::helper
