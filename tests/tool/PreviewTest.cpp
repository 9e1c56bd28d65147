#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "ProgramRun.h"

namespace zovk {
namespace {

/// A port of this machine on which nobody listens, for as long as the object lives.
class DeafPort {
 public:
  DeafPort() {
    address_.sin_family = AF_INET;
    address_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t length = sizeof address_;
    auto* const address = reinterpret_cast<sockaddr*>(&address_);
    EXPECT_EQ(::bind(socket_, address, length), 0);
    EXPECT_EQ(::getsockname(socket_, address, &length), 0);
  }
  ~DeafPort() { ::close(socket_); }
  DeafPort(const DeafPort&) = delete;
  DeafPort& operator=(const DeafPort&) = delete;
  int number() const { return ntohs(address_.sin_port); }

 private:
  int socket_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address_{};
};

// The real library and the real helper show the page.
class PreviewCommand : public ToolTest {
 protected:
  std::string answering(const std::string& action) const {
    return write("page.html", answeringPage(action, "hello", true));
  }
  /// Width and height of a PNG.
  static std::pair<int, int> sizeOfPicture(const std::string& path) {
    const std::string bytes = read(path);
    if (bytes.size() < 24 || bytes.compare(1, 3, "PNG") != 0) return {};
    const auto number = [&](std::size_t at) {
      int value = 0;
      for (std::size_t i = 0; i < 4; ++i)
        value = value * 256 + static_cast<unsigned char>(bytes[at + i]);
      return value;
    };
    return {number(16), number(20)};
  }
};

TEST_F(PreviewCommand, TellsWhatTheGameWouldBeTold) {
  for (const auto& [action, code] :
       std::vector<std::pair<std::string, int>>{{"skip", 0}, {"commit", 1}, {"cancel", 2}}) {
    const ProgramRun run = runTool({"preview", answering(action)});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, std::to_string(code) + " " + action + R"( {"action":")" + action +
                           R"(","msg":"hello"})" + "\n");
    EXPECT_EQ(run.err, "");
  }
}

TEST_F(PreviewCommand, SpeaksJson) {
  const auto report = runTool({"preview", answering("skip"), "--json"}).json();
  EXPECT_EQ(report.at("code").to_number<int>(), 0);
  EXPECT_EQ(report.at("answer").as_string(), "skip");
  EXPECT_EQ(report.at("message").as_string(), R"({"action":"skip","msg":"hello"})");
}

TEST_F(PreviewCommand, OpensEveryKind) {
  for (const char* kind : {"ordinary", "game", "policy", "permission"}) {
    const ProgramRun run = runTool({"preview", answering("skip"), "--kind", kind});
    EXPECT_EQ(run.code, 0) << kind << run.err;
  }
}

TEST_F(PreviewCommand, PicturesThePageInTheSizeAndThemeThatAreAskedFor) {
  runTool({"new", "demo", "--folder", path("")});
  std::string last;
  for (const char* theme : {"light", "dark", "high-contrast"}) {
    const std::string picture = path(std::string(theme) + ".png");
    const ProgramRun run = runTool({"preview", path("demo.html"), "--size", "480x640", "--theme",
                                    theme, "--screenshot", picture});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.out, picture + "\n");
    EXPECT_EQ(sizeOfPicture(picture), std::pair(480, 640));
    EXPECT_NE(read(picture), last) << theme << " looks like the one before";
    last = read(picture);
  }
}

TEST_F(PreviewCommand, SaysThatAPageDoesNotLoad) {
  const DeafPort port;
  const ProgramRun run = runTool({"preview", "http://127.0.0.1:" + std::to_string(port.number()),
                                  "--screenshot", path("none.png")});
  EXPECT_EQ(run.code, 2);
  EXPECT_NE(run.err.find("the page did not load; no picture was taken"), std::string::npos)
      << run.err;
  EXPECT_FALSE(std::filesystem::exists(path("none.png")));
}

TEST_F(PreviewCommand, RefusesWhatItCannotShow) {
  EXPECT_EQ(runTool({"preview", path("nothing.html")}).code, 2);
  for (const char* size : {"640", "0x10", "10x99999", "axb", "10x10x10"}) {
    const ProgramRun run = runTool({"preview", answering("skip"), "--size", size});
    EXPECT_EQ(run.code, 2) << size;
    EXPECT_NE(run.err.find("is no size"), std::string::npos) << run.err;
  }
}

TEST_F(PreviewCommand, LeavesNoFilesBehind) {
  const std::string temporary = path("temporary");
  std::filesystem::create_directory(temporary);
  const ProgramRun run = runProgram(
      {"/usr/bin/env", "TMPDIR=" + temporary, ZOVKPOPUP_TOOL, "preview", answering("skip")});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_TRUE(std::filesystem::is_empty(temporary));
}

}  // namespace
}  // namespace zovk
