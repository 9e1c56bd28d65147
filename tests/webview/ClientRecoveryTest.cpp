#include <csignal>

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "ClientFixture.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

/// Waits for the process to end, for a few seconds at most.
bool endsSoon(pid_t process) {
  const UniqueFd descriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0U)));
  if (!descriptor) return true;
  pollfd ended{descriptor.get(), POLLIN, 0};
  return ::poll(&ended, 1, 10000) == 1;
}

TEST_F(HelperClientLive, ThePageComesBackWhenTheHelperIsKilled) {
  openPage();
  killHelper();
  pumpUntil("the page again", [&] { return screen_->messages.size() == 2; });
  EXPECT_EQ(screen_->messages[1], screen_->messages[0]);
  EXPECT_EQ(screen_->page->url(), pageUrl());
  EXPECT_TRUE(screen_->failures.empty());
  pumpUntil("the keyboard", [&] { return window_->isKeyWindow(); });
  // The buttons work, and what was hidden stays so.
  click("crossBtn");
  pumpUntil("the action", [&] { return !screen_->actions.empty(); });
  const auto hidden = client_->viewFrame("returnBtn");
  EXPECT_TRUE(!hidden || !hidden->visible);
  EXPECT_TRUE(screen_->turns.empty());
}

TEST_F(HelperClientLive, ASecondKillEndsTheRun) {
  openPage();
  killHelper();
  pumpUntil("the page again", [&] { return screen_->messages.size() == 2; });
  killHelper();
  pumpUntil("the end", [&] { return !screen_->failures.empty(); });
  ASSERT_EQ(screen_->failures.size(), 1U);
  EXPECT_NE(screen_->failures[0].find("The helper cannot be used"), std::string::npos);
  EXPECT_EQ(client_->helperProcessId(), 0);
}

/// Kills pages as the system does when memory runs out, but for one that has just been started: it
/// would take the helper with it, since the engine aborts when such a process does not report.
void killPages(pid_t helper) {
  constexpr std::size_t kThreadsOnceItRuns = 4;
  for (const pid_t page : descendantsNamed(helper, "WebKitWebProces")) {
    if (threadsOf(page) >= kThreadsOnceItRuns) ::kill(page, SIGKILL);
  }
}

TEST_F(HelperClientLive, APageWhoseProcessDiesBeforeItIsThereComesAllTheSame) {
  screen_->whenAsked = [&] {
    if (screen_->navigations.size() == 1) killPages(client_->helperProcessId());
  };
  openPage();
  EXPECT_EQ(screen_->terminated, 1);
  EXPECT_TRUE(screen_->failures.empty());
}

TEST_F(HelperClientLive, APageWhoseProcessDiesTwiceBeforeItIsThereEndsTheRun) {
  screen_->whenAsked = [&] { killPages(client_->helperProcessId()); };
  window_ = client_->makeWindow({kLeft, kTop, kWidth, kHeight});
  window_->setRootViewController(screen_);
  screen_->page->loadFile(pageUrl(), pageUrl());
  window_->makeKeyAndVisible();
  pumpUntil("the end", [&] { return !screen_->failures.empty(); });
  EXPECT_EQ(screen_->terminated, 1);
  EXPECT_EQ(screen_->navigations.size(), 2U);
  ++killed_;  // the one error line
}

TEST_F(HelperClientLive, AHelperThatIsStoppedIsReplaced) {
  openPage();
  const pid_t helper = client_->helperProcessId();
  ASSERT_EQ(::kill(helper, SIGSTOP), 0);
  pumpUntil("another helper", [&] { return client_->helperProcessId() != helper; });
  ++killed_;
  pumpUntil("the page again", [&] { return screen_->messages.size() == 2; });
  EXPECT_NE(lines_.back().find("it does not answer"), std::string::npos) << lines_.back();
}

TEST_F(HelperClientLive, TheNextWindowWorksAfterAFailure) {
  openPage();
  killHelper();
  killHelper();
  pumpUntil("the end", [&] { return !screen_->failures.empty(); });
  window_.reset();
  screen_ = std::make_shared<ClientScreen>(*client_);
  openPage();
  EXPECT_TRUE(screen_->failures.empty());
}

TEST_F(HelperClientLive, ShutdownLeavesNoProcessAndNoDescriptor) {
  // The queue's own descriptors stay.
  client_.reset();
  const std::size_t before = openDescriptors(::getpid());
  ZOVKPopupHostSettings settings;
  settings.applicationId = "client.test";
  client_ = std::make_unique<HelperUserInterface>(settings, *queue_, *device_);
  screen_ = std::make_shared<ClientScreen>(*client_);
  openPage();
  const pid_t helper = client_->helperProcessId();
  const std::vector<pid_t> processes = descendantsOf(helper);
  ASSERT_FALSE(processes.empty()) << "the web processes";
  const auto start = std::chrono::steady_clock::now();
  client_->shutDown();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_EQ(openDescriptors(::getpid()), before);
  EXPECT_EQ(::kill(helper, 0), -1) << "not even a zombie";
  for (const pid_t process : processes) EXPECT_TRUE(endsSoon(process));
}

TEST_F(HelperClientLive, RunAfterRunLeavesNothingBehindInTheGame) {
  openPage();
  for (int i = 0; i < 5; ++i) {
    screen_ = std::make_shared<ClientScreen>(*client_);
    window_.reset();
    openPage();
  }
  const std::size_t before = openDescriptors(::getpid());
  for (int i = 0; i < 15; ++i) {
    screen_ = std::make_shared<ClientScreen>(*client_);
    window_.reset();
    openPage();
  }
  EXPECT_EQ(openDescriptors(::getpid()), before);
  window_.reset();
  EXPECT_EQ(screen_.use_count(), 1);
  queue_->pump(std::chrono::milliseconds(100));
  EXPECT_TRUE(client_->isEmpty());
}

}  // namespace
}  // namespace zovk
