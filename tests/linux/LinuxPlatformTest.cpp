#include <chrono>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <sys/resource.h>

#include "PollWait.h"
#include "ScopedVariable.h"
#include "ScratchDirectory.h"
#include "platform/linux/LinuxPlatform.h"

namespace zovk {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::Optional;

constexpr std::chrono::hours kPlenty{1};

#if defined(__has_feature)
constexpr bool kUndefinedBehaviorSanitizer = __has_feature(undefined_behavior_sanitizer);
#else
constexpr bool kUndefinedBehaviorSanitizer = false;
#endif

/// A platform whose helper program does not exist.
class LinuxPlatformTest : public testing::Test {
 protected:
  LinuxPlatformTest() {
    settings.applicationId = "game";
    settings.dataDirectory = scratch / "home";
    settings.resourceDirectory = scratch.path();
    settings.helperPath = scratch / "no-helper";
    settings.logSink = [this](std::string_view line) {
      const std::lock_guard lock(mutex);
      lines.emplace_back(line);
    };
  }

  ScratchDirectory scratch;
  ZOVKPopupHostSettings settings;
  std::mutex mutex;
  std::vector<std::string> lines;
};

TEST_F(LinuxPlatformTest, IsThePlatformThatIsLinkedIn) {
  const auto platform = makeDefaultPlatform(settings);
  ASSERT_NE(platform, nullptr);
  EXPECT_NE(dynamic_cast<LinuxPlatform*>(platform.get()), nullptr);
}

TEST_F(LinuxPlatformTest, ASettingThatHadToWaitIsKeptByALaterPumpOrTheEnd) {
  const std::string file = scratch / "home/Library/Preferences/settings.db";
  for (const bool byPump : {true, false}) {
    LinuxPlatform platform(settings);
    SettingsStore& store = platform.interfaces().settings;
    store.set("key", "old");
    sqlite3* opened = nullptr;
    ASSERT_EQ(sqlite3_open(file.c_str(), &opened), SQLITE_OK);
    SqliteDatabase other(opened);
    ASSERT_EQ(sqlite3_exec(opened, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    store.set("key", "new");
    ASSERT_EQ(sqlite3_exec(opened, "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
    const auto kept = [&] { return SqliteSettings(file).value("key") == "new"; };
    EXPECT_FALSE(kept());
    if (byPump) {
      const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
      while (!kept() && std::chrono::steady_clock::now() < end) platform.pump(kPlenty);
    } else {
      platform.shutDown();
    }
    EXPECT_TRUE(kept());
  }
}

TEST_F(LinuxPlatformTest, ItsDefaultHomeIsTheUsersAloneThoughItWasThereBefore) {
  const ScopedVariable data("XDG_DATA_HOME", scratch.path());
  settings.dataDirectory = "";
  std::filesystem::create_directory(scratch / "game");
  std::filesystem::permissions(scratch / "game", std::filesystem::perms(0755));
  const LinuxPlatform platform(settings);
  EXPECT_EQ(std::filesystem::status(scratch / "game").permissions(), std::filesystem::perms(0700));
}

TEST_F(LinuxPlatformTest, ItsPartsKeepTheirThingsInTheApplicationsHome) {
  LinuxPlatform platform(settings);
  Platform& parts = platform.interfaces();
  EXPECT_EQ(parts.device.homeDirectory(), scratch / "home");
  EXPECT_EQ(parts.bundles.mainBundle()->resourcePath(), scratch.path());
  EXPECT_TRUE(parts.files.exists(scratch / "home/Library/Caches"));
  parts.settings.set("key", "value");
  EXPECT_THAT(parts.settings.value("key"), Optional(std::string("value")));
  EXPECT_TRUE(parts.files.exists(scratch / "home/Library/Preferences/settings.db"));
  parts.log.writeLine("a line");
  EXPECT_THAT(lines, Contains("a line"));
}

TEST_F(LinuxPlatformTest, APumpRunsTasksAndTimers) {
  LinuxPlatform platform(settings);
  int count = 0;
  platform.interfaces().mainQueue.async([&] { ++count; });
  EXPECT_TRUE(isReadable(platform.pollDescriptor()));
  platform.pump(kPlenty);
  EXPECT_EQ(count, 1);
  const auto timer = platform.interfaces().timers.scheduleRepeating(std::chrono::milliseconds(1),
                                                                    [&] { ++count; });
  while (count < 2 && waitReadable(platform.pollDescriptor(), std::chrono::seconds(10))) {
    platform.pump(kPlenty);
  }
  EXPECT_GE(count, 2);
}

TEST_F(LinuxPlatformTest, ShutDownIsQuickAndEndsEverything) {
  LinuxPlatform platform(settings);
  bool ran = false;
  platform.interfaces().mainQueue.async([&] { ran = true; });
  const auto start = std::chrono::steady_clock::now();
  platform.shutDown();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_EQ(platform.pollDescriptor(), -1);
  platform.pump(kPlenty);
  platform.shutDown();
  platform.gameWindowDidBecomeKey();
  EXPECT_FALSE(ran);
}

TEST_F(LinuxPlatformTest, ACompletionThatWaitsForTheMainThreadDoesNotHoldUpTheShutdown) {
  LinuxPlatform platform(settings);
  Platform& parts = platform.interfaces();
  std::promise<void> waiting;
  bool ran = false;
  UrlRequest request;
  request.url = "unusable";
  parts.urlSession
      .dataTask(request,
                [&](const DataResult&) {
                  waiting.set_value();
                  parts.mainQueue.sync([&] { ran = true; });
                })
      ->resume();
  waiting.get_future().wait();
  platform.shutDown();
  EXPECT_FALSE(ran);
}

TEST_F(LinuxPlatformTest, TheLogOutlivesThePlatform) {
  std::shared_ptr<PlatformLog> log;
  {
    const LinuxPlatform platform(settings);
    log = platform.sharedLog();
  }
  log->writeLine("late");
  EXPECT_THAT(lines, Contains("late"));
}

TEST(LinuxPlatform, WithoutDescriptorsThereIsNoneAndOneLineSaysWhy) {
  if (kUndefinedBehaviorSanitizer) GTEST_SKIP() << "the sanitizer needs descriptors of its own";
  std::vector<std::string> lines;
  ZOVKPopupHostSettings settings;
  settings.logSink = [&lines](std::string_view line) { lines.emplace_back(line); };
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
  rlimit none = before;
  none.rlim_cur = 0;
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
  const auto platform = makeDefaultPlatform(settings);
  ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
  EXPECT_EQ(platform, nullptr);
  EXPECT_THAT(lines, testing::ElementsAre(HasSubstr("[Error] The platform cannot be set up")));
}

}  // namespace
}  // namespace zovk
