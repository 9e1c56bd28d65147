#include <csignal>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <sys/wait.h>

#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
namespace fs = std::filesystem;

/// The client with real processes, which are scripts of the test.
class HelperProcesses : public ClientOfTheHelper {
 protected:
  HelperProcesses() {
    std::string pattern = (fs::temp_directory_path() / "helper-XXXXXX").string();
    directory_ = ::mkdtemp(pattern.data());
  }
  ~HelperProcesses() override {
    client_.reset();
    fs::remove_all(directory_);
  }

  void startScript(const std::string& body) {
    const fs::path script = directory_ / "helper";
    std::ofstream(script) << "#!/bin/sh\n" << body;
    fs::permissions(script, fs::perms::owner_all);
    settings_.helperPath = script;
    HelperLauncher launcher = helperProcessLauncher(settings_);
    launcher.endTimeout = std::chrono::milliseconds(20);
    start(std::move(launcher));
  }
  std::string output() const {
    std::ifstream file(directory_ / "output");
    return {std::istreambuf_iterator<char>(file), {}};
  }
  static bool hasChildren() {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0;
  }

  fs::path directory_;
};

TEST_F(HelperProcesses, TheHelperInheritsItsSocketAndNothingElseThatIsOpen) {
  const UniqueFd leaky(::open("/dev/null", O_RDONLY));  // as games leave them: inherited
  std::signal(SIGPIPE, SIG_IGN);
  startScript("readlink /proc/$$/fd/* > " + (directory_ / "output").string() +
              "; grep SigIgn /proc/$$/status >> " + (directory_ / "output").string());
  pumpUntil("the end of both helpers", [&] { return lines_.size() == 2; });
  std::signal(SIGPIPE, SIG_DFL);
  const std::string seen = output();
  // The shell keeps the script open under a number of its own.
  EXPECT_THAT(seen, HasSubstr("/dev/null\n"));
  EXPECT_THAT(seen, HasSubstr("socket:"));
  EXPECT_EQ(seen.find("/dev/null"), seen.rfind("/dev/null")) << seen;
  EXPECT_EQ(seen.find("socket:"), seen.rfind("socket:")) << seen;
  EXPECT_EQ(seen.find("anon_inode"), std::string::npos) << seen;
  const std::string ignored = seen.substr(seen.find("SigIgn:") + 7);
  EXPECT_EQ(std::stoul(ignored, nullptr, 16) & (1U << (SIGPIPE - 1)), 0U) << seen;
}

TEST_F(HelperProcesses, AHelperThatEndsIsReapedAndItsEndTold) {
  startScript("exit 3");
  pumpUntil("the end of both helpers", [&] { return lines_.size() == 2; });
  pumpUntil("nothing left", [] { return !hasChildren(); });
  EXPECT_EQ(client_->helperProcessId(), 0);
}

TEST_F(HelperProcesses, WhatAHelperSaidBeforeItsEndComesInTurnsOfThePump) {
  constexpr std::size_t kLines = 50;
  const fs::path frames = directory_ / "frames";
  std::ofstream file(frames, std::ios::binary);
  for (std::size_t i = 0; i < kLines; ++i)
    file << *encodeFrame({{"type", "log"}, {"line", "said"}});
  file.close();
  startScript("cat " + frames.string() + " >&3");
  siginfo_t ended{};
  ASSERT_EQ(
      ::waitid(P_PID, static_cast<id_t>(client_->helperProcessId()), &ended, WEXITED | WNOWAIT), 0);
  std::size_t turns = 0;
  for (; lines_.size() < kLines && turns < 10 * kLines; ++turns) {
    const std::size_t before = lines_.size();
    queue_.pump(std::chrono::microseconds(0));
    ASSERT_LE(lines_.size(), before + 1);
  }
  EXPECT_EQ(lines_, std::vector<std::string>(kLines, "said"));
  pumpUntil("the end", [&] { return lines_.size() > kLines; });
  EXPECT_THAT(lines_[kLines], HasSubstr("lost"));
}

TEST_F(HelperProcesses, AMissingHelperIsToldByItsPath) {
  settings_.helperPath = directory_ / "none";
  start(helperProcessLauncher(settings_));
  pump();
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("none: No such file"), HasSubstr("giving up")));
  EXPECT_FALSE(hasChildren());
}

TEST_F(HelperProcesses, AHelperThatIsKilledIsReapedAndStartedAgain) {
  startScript("exec sleep 1000");
  const pid_t first = client_->helperProcessId();
  ASSERT_GT(first, 0);
  ::kill(first, SIGKILL);
  pumpUntil("another helper", [&] { return client_->helperProcessId() != first; });
  EXPECT_THAT(takeLines(), ElementsAre(testing::AnyOf(HasSubstr("was ended by signal 9"),
                                                      HasSubstr("closed its connection"))));
  ASSERT_GT(client_->helperProcessId(), 0);
}

TEST_F(HelperProcesses, ShutdownEndsAHelperThatDoesNotListen) {
  startScript("trap '' TERM HUP; exec sleep 1000");
  const pid_t helper = client_->helperProcessId();
  client_->shutDown();
  EXPECT_EQ(::kill(helper, 0), -1);
  EXPECT_FALSE(hasChildren());
  client_->shutDown();
  EXPECT_EQ(client_->helperProcessId(), 0);
}

TEST_F(HelperProcesses, ShutdownLeavesAHelperTheTimeToEndByItself) {
  // It goes on until its socket closes.
  startScript("read -r line <&3; while read -r line <&3; do :; done; echo ended > " +
              (directory_ / "output").string());
  client_->shutDown();
  EXPECT_FALSE(hasChildren());
}

TEST_F(HelperProcesses, StartingDoesNotWaitForTheHelper) {
  const auto before = std::chrono::steady_clock::now();
  startScript("exec sleep 1000");
  const auto took = std::chrono::steady_clock::now() - before;
  EXPECT_LT(took, std::chrono::milliseconds(500)) << "far more than it takes, far less than 20 s";
}

TEST_F(HelperProcesses, AForkedCopyOfTheGameLeavesTheHelperAlone) {
  startReady();
  auto window = client_->makeWindow({});
  auto page = client_->makeWebView({});
  commands();
  const pid_t child = ::fork();
  if (child == 0) {
    page.reset();
    window.reset();
    client_.reset();
    ::_exit(0);
  }
  ASSERT_GT(child, 0);
  ASSERT_EQ(::waitpid(child, nullptr, 0), child);
  EXPECT_THAT(commands(), testing::IsEmpty());
  EXPECT_FALSE(hosts_.last().sawEnd());
  receive(R"({"type":"screen","screen":[0,0,5,6]})");
  EXPECT_EQ(client_->mainScreenBounds(), (Rect{0, 0, 5, 6}));
}

TEST_F(HelperProcesses, HandlesThatOutliveTheClientDoNothing) {
  startReady();
  const auto window = client_->makeWindow({});
  const auto controller = std::make_shared<RecordingController>();
  window->setRootViewController(controller);
  const auto layout = client_->loadLayout("/bundle", "Main", {});
  const auto page = client_->makeWebView({});
  int answers = 0;
  page->evaluateJavaScript("1", [&](const ScriptResult&) { ++answers; });
  client_.reset();
  page->load("https://a/");
  page->evaluateJavaScript("1", [&](const ScriptResult&) { ++answers; });
  layout->outlet("a")->setHidden(true);
  window->setNeedsUpdateConstraints();
  pump();
  EXPECT_EQ(answers, 0);
  EXPECT_THAT(controller->calls, ElementsAre("loadView"));
  EXPECT_TRUE(hosts_.last().sawEnd());
}

}  // namespace
}  // namespace zovk
