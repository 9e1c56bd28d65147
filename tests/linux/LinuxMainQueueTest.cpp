#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include "PollWait.h"
#include "platform/linux/system/LinuxMainQueue.h"

namespace zovk {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using testing::ElementsAre;

constexpr milliseconds kBound{10'000};
constexpr microseconds kPlenty{std::chrono::hours(1)};

void spend(milliseconds duration) {
  const auto end = std::chrono::steady_clock::now() + duration;
  while (std::chrono::steady_clock::now() < end) {
  }
}

/// A descriptor that can be made readable.
class Signal {
 public:
  Signal() : fd_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
  int fd() const { return fd_.get(); }
  void raise() { ASSERT_EQ(::eventfd_write(fd(), 1), 0); }
  void clear() {
    eventfd_t value = 0;
    ASSERT_EQ(::eventfd_read(fd(), &value), 0);
  }

 private:
  UniqueFd fd_;
};

TEST(LinuxMainQueue, ItsDescriptorIsReadableExactlyWhileTasksWait) {
  LinuxMainQueue queue;
  ASSERT_GE(queue.pollDescriptor(), 0);
  EXPECT_FALSE(isReadable(queue.pollDescriptor()));
  queue.async([] {});
  queue.async([] {});
  EXPECT_TRUE(isReadable(queue.pollDescriptor()));
  queue.pump(kPlenty);
  EXPECT_FALSE(isReadable(queue.pollDescriptor()));
}

TEST(LinuxMainQueue, ATaskFromAnotherThreadWakesTheHost) {
  LinuxMainQueue queue;
  bool ran = false;
  std::thread other([&] { queue.async([&] { ran = true; }); });
  EXPECT_TRUE(waitReadable(queue.pollDescriptor(), kBound));
  queue.pump(microseconds(0));
  EXPECT_TRUE(ran);
  other.join();
}

TEST(LinuxMainQueue, NoTaskIsBegunAfterTheBudgetHasPassed) {
  LinuxMainQueue queue;
  int count = 0;
  for (int i = 0; i < 3; ++i) {
    queue.async([&] {
      ++count;
      spend(milliseconds(5));
    });
  }
  queue.pump(milliseconds(5));
  EXPECT_EQ(count, 1);
  EXPECT_TRUE(isReadable(queue.pollDescriptor()));
  queue.pump(kPlenty);
  EXPECT_EQ(count, 3);
}

TEST(LinuxMainQueue, AnEmptyBudgetStillRunsOneTask) {
  LinuxMainQueue queue;
  int count = 0;
  for (int i = 0; i < 2; ++i) queue.async([&] { ++count; });
  queue.pump(microseconds(0));
  EXPECT_EQ(count, 1);
  queue.pump(microseconds(-5));
  EXPECT_EQ(count, 2);
}

TEST(LinuxMainQueue, ATaskThatAlwaysAddsAnotherDoesNotOutlastTheBudget) {
  LinuxMainQueue queue;
  std::function<void()> again = [&] { queue.async(again); };
  queue.async(again);
  queue.pump(milliseconds(2));
  EXPECT_TRUE(isReadable(queue.pollDescriptor()));
}

TEST(LinuxMainQueue, TasksThatNeverEndDoNotShutOutASource) {
  LinuxMainQueue queue;
  Signal signal;
  std::function<void()> again = [&] { queue.async(again); };
  queue.async(again);
  bool heard = false;
  queue.addSource(signal.fd(), [&] { heard = true; });
  signal.raise();
  for (int i = 0; i < 3 && !heard; ++i) queue.pump(microseconds(0));
  EXPECT_TRUE(heard);
  queue.removeSource(signal.fd());
}

TEST(LinuxMainQueue, ASourceThatNeverEndsDoesNotShutOutTasks) {
  LinuxMainQueue queue;
  Signal signal;
  queue.addSource(signal.fd(), [] {});
  signal.raise();
  bool ran = false;
  queue.async([&] { ran = true; });
  for (int i = 0; i < 3 && !ran; ++i) queue.pump(microseconds(0));
  EXPECT_TRUE(ran);
  queue.removeSource(signal.fd());
}

TEST(LinuxMainQueue, APumpWithinAPumpDoesNothing) {
  LinuxMainQueue queue;
  std::vector<int> order;
  queue.async([&] {
    queue.pump(kPlenty);
    order.push_back(1);
  });
  queue.async([&] { order.push_back(2); });
  queue.pump(kPlenty);
  EXPECT_THAT(order, ElementsAre(1, 2));
}

TEST(LinuxMainQueue, PumpingGoesOnAfterATaskThatThrew) {
  LinuxMainQueue queue;
  bool ran = false;
  queue.async([] { throw std::runtime_error("from the game"); });
  queue.async([&] { ran = true; });
  EXPECT_THROW(queue.pump(kPlenty), std::runtime_error);
  queue.pump(kPlenty);
  EXPECT_TRUE(ran);
}

TEST(LinuxMainQueue, ASourceIsCalledOnTheMainThreadWhileItIsReadable) {
  LinuxMainQueue queue;
  Signal signal;
  int count = 0;
  queue.addSource(signal.fd(), [&] {
    EXPECT_TRUE(queue.isMainThread());
    ++count;
    signal.clear();
  });
  queue.pump(kPlenty);
  EXPECT_EQ(count, 0);
  std::thread([&] { signal.raise(); }).join();
  EXPECT_TRUE(waitReadable(queue.pollDescriptor(), kBound));
  queue.pump(kPlenty);
  EXPECT_EQ(count, 1);
  EXPECT_FALSE(isReadable(queue.pollDescriptor()));
  queue.removeSource(signal.fd());
}

TEST(LinuxMainQueue, ASourceHearsThatItsOtherEndIsClosed) {
  LinuxMainQueue queue;
  int ends[2] = {-1, -1};
  ASSERT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
  const UniqueFd ours(ends[0]);
  UniqueFd theirs(ends[1]);
  bool heard = false;
  queue.addSource(ours.get(), [&] {
    heard = true;
    queue.removeSource(ours.get());
  });
  theirs.reset();
  EXPECT_TRUE(waitReadable(queue.pollDescriptor(), kBound));
  queue.pump(kPlenty);
  EXPECT_TRUE(heard);
}

TEST(LinuxMainQueue, ARemovedSourceIsNotCalledAndLetsGoOfItsCallback) {
  LinuxMainQueue queue;
  Signal signal;
  auto held = std::make_shared<int>(0);
  queue.addSource(signal.fd(), [held] { ++*held; });
  signal.raise();
  queue.removeSource(signal.fd());
  EXPECT_FALSE(isReadable(queue.pollDescriptor()));
  queue.pump(kPlenty);
  EXPECT_EQ(*held, 0);
  EXPECT_EQ(held.use_count(), 1);
  queue.removeSource(signal.fd());
}

TEST(LinuxMainQueue, ASourceMayRemoveAnotherThatIsReadyToo) {
  LinuxMainQueue queue;
  Signal first;
  Signal second;
  int count = 0;
  const auto removeBoth = [&] {
    ++count;
    queue.removeSource(first.fd());
    queue.removeSource(second.fd());
  };
  queue.addSource(first.fd(), removeBoth);
  queue.addSource(second.fd(), removeBoth);
  first.raise();
  second.raise();
  queue.pump(kPlenty);
  EXPECT_EQ(count, 1);
}

TEST(LinuxMainQueue, ADescriptorThatIsUsedAnewCallsItsNewCallback) {
  LinuxMainQueue queue;
  std::string heard;
  std::optional<Signal> old(std::in_place);
  const int number = old->fd();
  queue.addSource(number, [&] { heard += "old"; });
  queue.removeSource(number);
  old.reset();
  Signal anew;
  ASSERT_EQ(anew.fd(), number);
  queue.addSource(number, [&] {
    heard += "new";
    anew.clear();
  });
  anew.raise();
  queue.pump(kPlenty);
  EXPECT_EQ(heard, "new");
  queue.removeSource(number);
}

TEST(LinuxMainQueue, NothingIsCalledAfterShutDown) {
  LinuxMainQueue queue;
  Signal signal;
  int count = 0;
  queue.addSource(signal.fd(), [&] { ++count; });
  queue.async([&] { ++count; });
  signal.raise();
  queue.shutDown();
  EXPECT_FALSE(isReadable(queue.pollDescriptor()));
  queue.pump(kPlenty);
  EXPECT_EQ(count, 0);
  queue.removeSource(signal.fd());
}

TEST(LinuxMainQueue, ShutDownLetsGoOfASyncThatIsAlreadyWaiting) {
  LinuxMainQueue queue;
  bool ran = false;
  std::thread other([&] { queue.sync([&] { ran = true; }); });
  ASSERT_TRUE(waitReadable(queue.pollDescriptor(), kBound));
  queue.shutDown();
  other.join();
  EXPECT_FALSE(ran);
}

TEST(LinuxMainQueue, WhatADroppedTaskHeldMayAddTasks) {
  LinuxMainQueue queue;
  std::shared_ptr<int> held(new int(0), [&](int* value) {
    queue.async([] {});
    delete value;
  });
  queue.async([held = std::move(held)] {});
  queue.shutDown();
  EXPECT_FALSE(isReadable(queue.pollDescriptor()));
}

}  // namespace
}  // namespace zovk
