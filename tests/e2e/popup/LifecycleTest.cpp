#include <cerrno>
#include <csignal>
#include <filesystem>
#include <fstream>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "fixtures/HostFixture.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

using Lifecycle = HostFixture;

TEST_F(Lifecycle, CallsAfterShutDownAreAnsweredWithAnError) {
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopupHost::shutDown();
  ZOVKPopupHost::shutDown();
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  ZOVKPopup::showPolicy(recordAnswer());
  ZOVKPopup::startPopup("http://127.0.0.1:9", "1", "2");
  ZOVKPopup::setChannelID(1, "", "", "");
  EXPECT_FALSE(ZOVKPopup::havePopup(1));
  ASSERT_EQ(answers().size(), 2U);
  EXPECT_EQ(answers()[0].first, -1);
  EXPECT_EQ(answers()[1].first, -1);
  EXPECT_TRUE(logged("ZOVKPopup is not set up, or was shut down"));
  ZOVKPopupHost::pump();
  EXPECT_EQ(ZOVKPopupHost::pollDescriptor(), -1);
}

TEST_F(Lifecycle, ShuttingDownUnderAnOpenPopupIsQuickAndLeavesNothing) {
  const std::size_t descriptors = openDescriptors(getpid());
  bundle().addPage(popup("welcome", 1), answeringPage("skip", "", false));
  bundle().write();
  std::ofstream(fs::path(bundle().resourceDirectory()) / "Info.json") << R"({"ZOVK_DEBUG": true})";
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  pumpUntil([&] { return logged("Did finish navigation"); }, "the page");
  ASSERT_EQ(childrenOf(getpid()).size(), 1U);
  const auto start = std::chrono::steady_clock::now();
  ZOVKPopupHost::shutDown();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_TRUE(childrenOf(getpid()).empty());
  EXPECT_EQ(openDescriptors(getpid()), descriptors);
  EXPECT_TRUE(answers().empty());
}

TEST_F(Lifecycle, AWrongHelperPathEndsEveryRequestWithItsReason) {
  auto wrong = settings();
  wrong.helperPath = "/nowhere/zovkpopup-helper";
  bundle().addPage(popup("welcome", 1), answeringPage("skip", "", true));
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(wrong));
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  pumpUntilAnswers(2);
  for (const Answer& answer : answers()) {
    EXPECT_EQ(answer.first, -1);
    EXPECT_FALSE(answer.second.empty());
  }
}

TEST_F(Lifecycle, WithoutADisplayEveryRequestEndsWithAReason) {
  unsetenv("WAYLAND_DISPLAY");
  setenv("DISPLAY", ":4095", 1);
  bundle().addPage(popup("welcome", 1), answeringPage("skip", "", true));
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_EQ(answers().front().first, -1);
  EXPECT_FALSE(answers().front().second.empty());
}

TEST_F(Lifecycle, ThePopupSurvivesOneDeathOfItsHelper) {
  bundle().addPage(popup("welcome", 1), R"(<!doctype html><script>
addEventListener('load', () => {
  const before = localStorage.getItem('loads');
  localStorage.setItem('loads', 'yes');
  setTimeout(() => window.webkit.messageHandlers.ZOVKPopup.postMessage(
      JSON.stringify({action: 'skip', msg: 'answered'})), 1500);
});
</script>)");
  bundle().write();
  std::ofstream(fs::path(bundle().resourceDirectory()) / "Info.json") << R"({"ZOVK_DEBUG": true})";
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  pumpUntil([&] { return logged("Did finish navigation"); }, "the page");
  const auto helpers = childrenOf(getpid());
  ASSERT_EQ(helpers.size(), 1U);
  kill(helpers.front(), SIGKILL);
  pumpUntilAnswers(1);
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, R"({"action":"skip","msg":"answered"})"}}));
}

TEST_F(Lifecycle, KillingTheGameTakesTheHelperAlong) {
  bundle().addPage(popup("welcome", 1), answeringPage("skip", "", false));
  bundle().write();
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t game = fork();
  if (game == 0) {
    ZOVKPopupHost::setUp(settings());
    ZOVKPopup::showPopup("welcome", 0, nullptr);
    const auto helpers = childrenOf(getpid());
    const pid_t helper = helpers.empty() ? -1 : helpers.front();
    if (write(ready[1], &helper, sizeof helper) != sizeof helper) _exit(1);
    while (true) {
      pollfd events{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
      poll(&events, 1, 100);
      ZOVKPopupHost::pump();
    }
  }
  pid_t helper = -1;
  ASSERT_EQ(read(ready[0], &helper, sizeof helper), static_cast<ssize_t>(sizeof helper));
  ASSERT_GT(helper, 0);
  EXPECT_TRUE(isAlive(helper));
  kill(game, SIGKILL);
  waitpid(game, nullptr, 0);
  pumpUntil([&] { return !isAlive(helper); }, "the helper's end");
  close(ready[0]);
  close(ready[1]);
}

TEST_F(Lifecycle, PagesGiveWayToTheGamesFrames) {
  bundle().addPage(popup("welcome", 1), answeringPage("skip", "", false));
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  pumpUntil([&] { return descendantsOf(getpid()).size() >= 3; }, "the page's processes");
  const int game = getpriority(PRIO_PROCESS, 0);
  for (const pid_t process : descendantsOf(getpid())) {
    errno = 0;
    const int nice = getpriority(PRIO_PROCESS, static_cast<id_t>(process));
    if (errno != ESRCH) {
      EXPECT_EQ(nice, game + 10);
    }
  }
}

TEST_F(Lifecycle, TheHelperListensOnNoSocket) {
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  const auto helpers = childrenOf(getpid());
  ASSERT_EQ(helpers.size(), 1U);
  for (const char* table : {"tcp", "tcp6"}) {
    std::ifstream sockets("/proc/" + std::to_string(helpers.front()) + "/net/" + table);
    std::string line;
    std::vector<std::string> listening;
    while (std::getline(sockets, line)) {
      if (line.find(" 0A ") != std::string::npos) listening.push_back(line);
    }
    // Other programs of the machine may listen: what counts is that no inode is the helper's.
    for (const auto& entry :
         fs::directory_iterator("/proc/" + std::to_string(helpers.front()) + "/fd")) {
      std::error_code ignored;
      const std::string target = fs::read_symlink(entry.path(), ignored).string();
      if (!target.starts_with("socket:[")) continue;
      const std::string inode = " " + target.substr(8, target.size() - 9) + " ";
      for (const std::string& row : listening) EXPECT_EQ(row.find(inode), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace zovk
