// What is asked of sway, by a stand-in of the test's own for its socket.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "ToolkitFixture.h"
#include "helper/window/SwayKeyboard.h"

namespace zovk::helper {
namespace {

using Message = std::pair<std::uint32_t, std::string>;

constexpr std::uint32_t kCommand = 0;
constexpr std::uint32_t kSubscribe = 2;
constexpr std::uint32_t kWindowEvent = 0x80000003;
constexpr std::size_t kHeader = 14;

std::string frameOf(std::uint32_t kind, const std::string& text) {
  const auto length = static_cast<std::uint32_t>(text.size());
  std::string frame = "i3-ipc";
  frame.append(reinterpret_cast<const char*>(&length), sizeof length);
  frame.append(reinterpret_cast<const char*>(&kind), sizeof kind);
  return frame + text;
}

std::string eventOf(const std::string& change, int process, const std::string& name = "") {
  return frameOf(kWindowEvent, R"({"change":")" + change + R"(","container":{"pid":)" +
                                   std::to_string(process) + R"(,"name":")" + name + R"("}})");
}

/// An event that this process's window came up, whose text has `length` bytes.
std::string eventOfLength(std::size_t length) {
  const std::size_t bare = eventOf("new", ::getpid()).size() - kHeader;
  return eventOf("new", ::getpid(), std::string(length - bare, 'n'));
}

class SwayStandIn {
 public:
  SwayStandIn() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof address.sun_path - 1);
    listener_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    EXPECT_EQ(::bind(listener_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
    EXPECT_EQ(::listen(listener_, 1), 0);
    setenv("SWAYSOCK", path_.c_str(), 1);
  }
  ~SwayStandIn() {
    unsetenv("SWAYSOCK");
    hangUp();
    ::close(listener_);
    std::filesystem::remove(path_);
  }
  SwayStandIn(const SwayStandIn&) = delete;
  SwayStandIn& operator=(const SwayStandIn&) = delete;

  void accept() { connection_ = ::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC); }
  void hangUp() {
    if (connection_ >= 0) ::close(std::exchange(connection_, -1));
  }
  Message receive() const {
    const std::string header = read(kHeader);
    std::uint32_t length = 0;
    std::uint32_t kind = 0;
    std::memcpy(&length, header.data() + 6, sizeof length);
    std::memcpy(&kind, header.data() + 10, sizeof kind);
    EXPECT_EQ(header.substr(0, 6), "i3-ipc");
    return {kind, read(length)};
  }
  void send(const std::string& bytes) const {
    std::size_t sent = 0;
    while (sent < bytes.size()) {
      const ssize_t part =
          ::send(connection_, bytes.data() + sent, bytes.size() - sent, MSG_NOSIGNAL);
      if (part <= 0) return;
      sent += static_cast<std::size_t>(part);
    }
  }

 private:
  std::string read(std::size_t size) const {
    std::string bytes(size, '\0');
    EXPECT_EQ(::recv(connection_, bytes.data(), size, MSG_WAITALL), static_cast<ssize_t>(size));
    return bytes;
  }

  std::string path_ =
      std::filesystem::temp_directory_path() / ("zovkpopup-sway." + std::to_string(::getpid()));
  int listener_ = -1;
  int connection_ = -1;
};

class Sway : public ToolkitFixture {
 protected:
  void ask() {
    keyboard_.ask();
    sway_.accept();
    sway_.receive();
    sway_.receive();
  }
  void awaitCameUp(int count) {
    EXPECT_TRUE(runUntil([&] { return cameUp_ >= count; }));
    EXPECT_EQ(cameUp_, count);
  }
  static void runWhatIsPending() {
    while (g_main_context_iteration(nullptr, FALSE) == TRUE) {
    }
  }

  SwayStandIn sway_;
  int cameUp_ = 0;
  SwayKeyboard keyboard_{[this] { ++cameUp_; }};
};

TEST_F(Sway, IsAskedForTheKeyboardOnTheWorkSpaceThatIsSeen) {
  EXPECT_TRUE(isSwayRunning());
  keyboard_.ask();
  sway_.accept();
  EXPECT_EQ(sway_.receive(), Message(kSubscribe, R"(["window"])"));
  const Message wanted(kCommand, "[pid=" + std::to_string(::getpid()) +
                                     "] move container to workspace current, focus");
  EXPECT_EQ(sway_.receive(), wanted);
  keyboard_.ask();
  EXPECT_EQ(sway_.receive(), wanted) << "asked again, on the same connection";
}

TEST_F(Sway, ReportsEachWindowOfThisProcessThatComesUp) {
  ask();
  sway_.send(eventOf("new", ::getpid()));
  awaitCameUp(1);
  sway_.send(eventOf("new", ::getpid()));
  awaitCameUp(2);
}

TEST_F(Sway, ReportsNoOtherEventAndNoOtherProcess) {
  ask();
  const std::string answer = eventOf("new", ::getpid()).substr(kHeader);
  const std::string others[] = {
      eventOf("focus", ::getpid()),
      eventOf("new", ::getpid() + 1),
      frameOf(kWindowEvent, R"({"change":"new"})"),
      frameOf(kWindowEvent, R"({"change":"new","container":null})"),
      frameOf(kWindowEvent, R"({"container":{"pid":true}})"),
      frameOf(kWindowEvent, ""),
      frameOf(kWindowEvent, "{"),
      frameOf(kWindowEvent, "[]"),
      frameOf(kCommand, answer),
  };
  for (const std::string& other : others) {
    sway_.send(other);
    runWhatIsPending();
    EXPECT_EQ(cameUp_, 0) << other.substr(kHeader);
  }
  sway_.send(eventOf("new", ::getpid()));
  awaitCameUp(1);
}

TEST_F(Sway, IsUnderstoodInPieces) {
  ask();
  for (const char byte : eventOf("new", ::getpid())) {
    EXPECT_EQ(cameUp_, 0);
    sway_.send(std::string(1, byte));
    runWhatIsPending();
  }
  EXPECT_EQ(cameUp_, 1);
}

TEST_F(Sway, MayWriteAMebibyteAtOnce) {
  ask();
  std::thread writer([&] { sway_.send(eventOfLength(std::size_t{1} << 20)); });
  awaitCameUp(1);
  writer.join();
}

TEST_F(Sway, IsNotListenedToAnyMoreOnceItWritesMore) {
  ask();
  sway_.send(eventOfLength((std::size_t{1} << 20) + 1).substr(0, kHeader));
  runWhatIsPending();
  sway_.send("{");
  EXPECT_FALSE(g_main_context_pending(nullptr)) << "what it writes now is left unread";
}

TEST_F(Sway, MayEndMeanwhile) {
  ask();
  sway_.hangUp();
  runWhatIsPending();
  EXPECT_FALSE(g_main_context_pending(nullptr)) << "nobody waits for it in a loop";
  keyboard_.ask();
  EXPECT_EQ(cameUp_, 0);
}

TEST_F(Sway, IsNotThereAtAnAddressThatNobodyListensTo) {
  setenv("SWAYSOCK", "/nowhere/sway.sock", 1);
  keyboard_.ask();
  runWhatIsPending();
  setenv("SWAYSOCK", std::string(200, 's').c_str(), 1);
  SwayKeyboard(std::function<void()>()).ask();
  unsetenv("SWAYSOCK");
  EXPECT_FALSE(isSwayRunning());
  SwayKeyboard(std::function<void()>()).ask();
  EXPECT_EQ(cameUp_, 0);
}

}  // namespace
}  // namespace zovk::helper
