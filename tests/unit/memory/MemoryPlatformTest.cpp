#include <atomic>
#include <memory>
#include <thread>

#include <gtest/gtest.h>

#include "platform/memory/MemoryPlatform.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {
namespace {

using namespace std::chrono_literals;

TEST(MemoryPlatform, HandsOutItsOwnParts) {
  MemoryPlatform platform;
  const Platform& interfaces = platform.interfaces;
  EXPECT_EQ(&interfaces.log, &platform.log);
  EXPECT_EQ(&interfaces.files, &platform.files);
  EXPECT_EQ(&interfaces.userInterface, &platform.userInterface);
  EXPECT_EQ(&interfaces.clock, static_cast<Clock*>(&platform.scheduler));
  EXPECT_TRUE(interfaces.mainQueue.isMainThread());
}

TEST(MemoryPlatform, HasTheDirectoriesThatADeviceHas) {
  MemoryPlatform platform;
  for (const char* path :
       {"/home/player/Library/Caches", "/app/ZOVKPopupResource.bundle", "/tmp"}) {
    EXPECT_TRUE(platform.files.isDirectory(path)) << path;
  }
}

TEST(MemoryPlatform, LivesAsLongAsItsInterfacesAreShared) {
  auto platform = std::make_shared<MemoryPlatform>();
  const std::weak_ptr<MemoryPlatform> weak = platform;
  setCurrentPlatform(platform->shared());
  platform.reset();
  EXPECT_FALSE(weak.expired());
  EXPECT_TRUE(currentPlatform()->files.exists("/tmp"));
  setCurrentPlatform(nullptr);
  EXPECT_TRUE(weak.expired());
}

TEST(MemoryPlatform, SharesItsInterfacesWithoutBeingOwned) {
  MemoryPlatform platform;
  EXPECT_EQ(platform.shared().get(), &platform.interfaces);
}

TEST(MemoryPlatform, SettlesRequestsAndTheTasksThatTheyLeadTo) {
  MemoryPlatform platform;
  platform.urlSession.setHandler([](const MemoryRequest&) { return MemoryAnswer{}; });
  int rounds = 0;
  std::function<void()> send = [&] {
    platform.urlSession
        .dataTask({"http://host/", "GET", {}, {}},
                  [&](const DataResult&) {
                    if (++rounds < 3) platform.scheduler.async(send);
                  })
        ->resume();
  };
  platform.scheduler.async(send);
  platform.settle();
  EXPECT_EQ(rounds, 3);
}

TEST(MemoryPlatform, EndsWhileItsSessionThreadWaitsForTheMainThread) {
  MemoryPlatform platform;
  platform.urlSession.useThread();
  platform.urlSession.setHandler([](const MemoryRequest&) { return MemoryAnswer{}; });
  platform.urlSession
      .dataTask({"http://host/", "GET", {}, {}},
                [&](const DataResult&) { platform.scheduler.sync([] { FAIL(); }); })
      ->resume();
  while (platform.scheduler.pendingTaskCount() == 0) std::this_thread::yield();
}

TEST(MemoryHostedPlatform, RunsWhatIsDueWhenItIsPumped) {
  MemoryHostedPlatform platform;
  int ran = 0;
  platform.interfaces().mainQueue.async([&] { ++ran; });
  const auto timer = platform.interfaces().timers.scheduleRepeating(10ms, [&] { ++ran; });
  platform.pump(1s);
  EXPECT_EQ(ran, 1);
  platform.memory().scheduler.skip(10ms);
  platform.pump(1s);
  EXPECT_EQ(ran, 2);
  EXPECT_EQ(platform.pollDescriptor(), -1);
}

TEST(MemoryHostedPlatform, TakesTheKeyboardFromThePopupWhenTheGameSaysSo) {
  MemoryHostedPlatform platform;
  const auto window = platform.interfaces().userInterface.makeWindow({});
  window->makeKeyAndVisible();
  platform.pump(1s);
  EXPECT_TRUE(window->isKeyWindow());
  platform.gameWindowDidBecomeKey();
  EXPECT_FALSE(window->isKeyWindow());
}

TEST(MemoryHostedPlatform, CallsNothingBackOnceItIsShutDown) {
  MemoryHostedPlatform platform;
  platform.interfaces().mainQueue.async([] { FAIL(); });
  const auto timer = platform.interfaces().timers.scheduleRepeating(10ms, [] { FAIL(); });
  platform.shutDown();
  platform.shutDown();
  platform.memory().scheduler.skip(1s);
  platform.pump(1s);
  platform.memory().scheduler.advance(1s);
}

}  // namespace
}  // namespace zovk
