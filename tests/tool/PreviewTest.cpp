#include <fstream>
#include <optional>
#include <thread>

#include <gmock/gmock.h>
#include <httplib.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ProgramRun.h"
#include "fixtures/ChildProcess.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

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
  const std::string address = "http://127.0.0.1:" + std::to_string(port.number());
  const ProgramRun run = runTool({"preview", address, "--screenshot", path("none.png")});
  EXPECT_EQ(run.code, 69);
  EXPECT_THAT(run.err, HasSubstr(address + ": the page did not load: Could not connect"));
  EXPECT_THAT(run.err, HasSubstr("no picture was taken"));
  EXPECT_FALSE(std::filesystem::exists(path("none.png")));
  EXPECT_EQ(runTool({"preview", address}).code, 69);
}

TEST_F(PreviewCommand, SaysThatAServerHasNoSuchPage) {
  httplib::Server server;
  server.Get("/empty",
             [](const httplib::Request&, httplib::Response& response) { response.status = 404; });
  const int port = server.bind_to_any_port("127.0.0.1");
  std::thread serving([&server] { server.listen_after_bind(); });
  const std::string address = "http://127.0.0.1:" + std::to_string(port) + "/empty";
  const ProgramRun run = runTool({"preview", address, "--screenshot", path("none.png")});
  server.stop();
  serving.join();
  EXPECT_EQ(run.code, 69);
  EXPECT_THAT(run.err, HasSubstr(address + ": the server answered 404"));
  EXPECT_FALSE(std::filesystem::exists(path("none.png")));
}

TEST_F(PreviewCommand, SaysThatThereIsNoDisplay) {
  for (const std::string picture : {"", "none.png"}) {
    std::vector<std::string> arguments = {
        "/usr/bin/env",    "-u",           "DISPLAY", "-u",
        "WAYLAND_DISPLAY", ZOVKPOPUP_TOOL, "preview", answering("skip")};
    if (!picture.empty()) arguments.insert(arguments.end(), {"--screenshot", path(picture)});
    const ProgramRun run = runProgram(arguments);
    EXPECT_EQ(run.code, 69);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "zovkpopup: nothing can be shown: there is no display; run it in a desktop "
              "session, or by xvfb-run where there is none\n");
  }
}

TEST_F(PreviewCommand, SaysWhatThePagesConsoleSays) {
  const std::string page = write("page.html", R"(<!doctype html><title>x</title>
<script>console.log('a', 1); console.warn('b'); console.error('c');</script>
<script>let a = ;</script>
<img src="other.png">
<script>setTimeout(() => { misspelt(); }, 0);</script>
<script>addEventListener('load', () => setTimeout(() => webkit.messageHandlers.ZOVKPopup
    .postMessage('{"action": "skip"}'), 100));
webkit.messageHandlers.ZOVKPopop.postMessage('{}');</script>)");
  const ProgramRun run = runTool({"preview", page, "--json"});
  EXPECT_EQ(run.code, 0);
  for (const char* line :
       {"page.html:2:20: log: a 1\n", ": warning: b\n", ": error: c\n",
        "page.html:3: error: SyntaxError: Unexpected token ';'\n", " blocked: Content blocker",
        "from loading a resource from other.png\n  A page file loads no other file",
        "page.html:5:36: error: ReferenceError: Can't find variable: misspelt\n",
        "There is no handler ZOVKPopop; the game listens to ZOVKPopup."}) {
    EXPECT_THAT(run.err, HasSubstr(line));
  }
  const auto report = run.json();
  const auto& console = report.at("console").as_array();
  ASSERT_GE(console.size(), 6U);
  EXPECT_EQ(console[1].at("level").as_string(), "warning");
  EXPECT_EQ(console[1].at("text").as_string(), "b");
}

TEST_F(PreviewCommand, SaysWhyAPostIsPassedOver) {
  const std::string page = write("page.html", R"(<!doctype html><title>x</title><script>
const popup = webkit.messageHandlers.ZOVKPopup;
popup.postMessage({action: 'skip'});
popup.postMessage('skip');
popup.postMessage('[]');
popup.postMessage('{}');
popup.postMessage('{"action": "Skip"}');
popup.postMessage('{"action": 1}');
popup.postMessage();
webkit.messageHandlers.__qvOpenSdk.postMessage('confirm');
popup.postMessage('{"action": "skip", "msg": "a b"}');</script>)");
  const auto report = runTool({"preview", page, "--json"}).json();
  std::vector<std::string> remarks;
  for (const auto& remark : report.at("remarks").as_array()) {
    remarks.emplace_back(remark.as_string());
  }
  EXPECT_THAT(remarks,
              ElementsAre(HasSubstr("is an object where a text is needed"),
                          HasSubstr("is a text that is no JSON"),
                          HasSubstr("is JSON, but no object"), HasSubstr("has no \"action\""),
                          HasSubstr("has the \"action\" \"Skip\"; write \"skip\""),
                          HasSubstr("has the \"action\" 1; it is a text"),
                          HasSubstr("it holds nothing"), HasSubstr("is no object, which this"),
                          HasSubstr("has blanks in \"msg\", which are lost on the way")));
}

TEST_F(PreviewCommand, SaysNothingOfAnAnswerThatArrivesWhole) {
  const auto report = runTool({"preview", answering("commit"), "--json"}).json();
  EXPECT_TRUE(report.at("remarks").as_array().empty());
  EXPECT_TRUE(report.at("console").as_array().empty());
}

TEST_F(PreviewCommand, RefusesASizeThatDoesNotFitTheScreen) {
  const ProgramRun run = runTool({"preview", answering("skip"), "--size", "9000x200"});
  EXPECT_EQ(run.code, 64);
  EXPECT_THAT(run.err, HasSubstr("--size 9000x200: does not fit the screen, which has "));
}

TEST_F(PreviewCommand, WritesASheetOfPictures) {
  const ProgramRun run = runTool({"preview", answering("none"), "--kind", "policy", "--size",
                                  "320x480", "--matrix", path("sheet.html")});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(run.out, path("sheet.html") + "\n");
  const std::string sheet = read(path("sheet.html"));
  for (const char* heading : {"<h2>policy, light</h2>", "<h2>policy, dark</h2>"}) {
    EXPECT_THAT(sheet, HasSubstr(heading));
  }
  const std::size_t first = sheet.find("data:image/png;base64,");
  const std::size_t second = sheet.find("data:image/png;base64,", first + 1);
  ASSERT_NE(second, std::string::npos);
  EXPECT_EQ(sheet.find("data:image/png;base64,", second + 1), std::string::npos);
  EXPECT_NE(sheet.substr(first, 4000), sheet.substr(second, 4000));
}

// Runs the tool with both outputs as one and standard input from a file of its own.
class WatchedPreview : public PreviewCommand {
 protected:
  void start() {
    ASSERT_EQ(::mkfifo(path("keys").c_str(), 0600), 0);
    tool_.emplace(
        std::vector<std::string>{"/bin/sh", "-c", "exec \"$0\" preview \"$1\" --watch <\"$2\" 2>&1",
                                 ZOVKPOPUP_TOOL, path("page.html"), path("keys")},
        path("errors"));
    keys_.open(path("keys"));
  }
  void press(char key) { keys_ << key << std::flush; }
  bool says(const std::string& text) {
    while (const auto line = tool_->nextLine()) {
      if (line->find(text) != std::string::npos) return true;
    }
    return false;
  }
  int end() { return tool_->wait(); }
  void writePage(const std::string& script) const {
    write("page.html", "<!doctype html><title>x</title><script>" + script + "</script>");
  }

 private:
  std::optional<ChildProcess> tool_;
  std::ofstream keys_;
};

TEST_F(WatchedPreview, LoadsAPageAgainWhenItIsSavedAndShowsItAnewAfterAnAnswer) {
  writePage("console.log('first')");
  start();
  ASSERT_TRUE(says("log: first"));
  writePage("console.log('second')");
  ASSERT_TRUE(says("loaded again"));
  ASSERT_TRUE(says("log: second"));
  std::ofstream(path("page.html")).close();
  ASSERT_TRUE(says("is empty, and no page"));
  writePage("webkit.messageHandlers.ZOVKPopup.postMessage('{\"action\": \"skip\"}')");
  ASSERT_TRUE(says("0 skip"));
  writePage("console.log('third')");
  ASSERT_TRUE(says("log: third"));
  press('q');
  EXPECT_EQ(end(), 0);
}

TEST_F(WatchedPreview, ItsKeysChangeThemeAndSizeAndKind) {
  writePage("console.log(matchMedia('(prefers-color-scheme: dark)').matches, innerWidth)");
  start();
  ASSERT_TRUE(says("log: false"));
  press('t');
  ASSERT_TRUE(says("theme: light"));
  press('t');
  ASSERT_TRUE(says("theme: dark"));
  ASSERT_TRUE(says("log: true"));
  press('s');
  ASSERT_TRUE(says("size: 360x640"));
  ASSERT_TRUE(says("log: true 360"));
  press('k');
  ASSERT_TRUE(says("kind: game"));
  ASSERT_TRUE(says("log: true 360"));
  press('q');
  EXPECT_EQ(end(), 0);
}

TEST_F(PreviewCommand, RefusesWhatIsNoPage) {
  EXPECT_EQ(runTool({"preview", path("nothing.html")}).code, 66);
  for (const auto& [text, why] : std::vector<std::pair<std::string, std::string>>{
           {"{\"popups\": []}", "is JSON, no page"},
           {" \n", "is empty"},
           {std::string("\x89PNG\0\0", 6), "is no page"}}) {
    const ProgramRun run = runTool({"preview", write("file", text)});
    EXPECT_EQ(run.code, 65);
    EXPECT_THAT(run.err, HasSubstr(path("file") + ": " + why));
  }
  EXPECT_EQ(runTool({"preview", "https://popups.example", "--watch"}).code, 64);
}

TEST_F(PreviewCommand, RefusesWhatItCannotShow) {
  for (const char* size : {"640", "0x10", "10x99999", "axb", "10x10x10"}) {
    const ProgramRun run = runTool({"preview", answering("skip"), "--size", size});
    EXPECT_EQ(run.code, 64) << size;
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
