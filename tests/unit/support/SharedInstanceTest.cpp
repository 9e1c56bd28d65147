#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "support/SharedInstance.h"

namespace zovk {
namespace {

class Counted {
 public:
  static std::shared_ptr<Counted> make() {
    if (!available) return nullptr;
    ++made;
    return std::make_shared<Counted>();
  }
  void init() {
    ++initialised;
    if (duringInit != nullptr) duringInit();
  }

  static inline std::atomic<int> made{0};
  static inline std::atomic<int> initialised{0};
  static inline bool available = true;
  static inline void (*duringInit)() = nullptr;
};

class SharedInstanceOfAClass : public ::testing::Test {
 protected:
  SharedInstanceOfAClass() {
    Counted::made = 0;
    Counted::initialised = 0;
    Counted::duringInit = nullptr;
  }
  ~SharedInstanceOfAClass() override { holder().purge(); }
  static SharedInstance<Counted>& holder() { return SharedInstance<Counted>::holder(); }
};

TEST_F(SharedInstanceOfAClass, IsMadeAndInitialisedOnce) {
  Counted* const first = holder().shared();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(holder().shared(), first);
  EXPECT_EQ(holder().sharedSynch(), first);
  EXPECT_EQ(holder().sharedNoSynch(), first);
  EXPECT_EQ(holder().allocate(), first);
  EXPECT_EQ(Counted::made, 1);
  EXPECT_EQ(Counted::initialised, 1);
}

TEST_F(SharedInstanceOfAClass, IsNotMadeByTheUnlockedAccessor) {
  EXPECT_EQ(holder().sharedNoSynch(), nullptr);
  EXPECT_EQ(Counted::made, 0);
}

TEST_F(SharedInstanceOfAClass, IsOneObjectHoweverOftenItIsAllocated) {
  Counted* const first = holder().allocate();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(holder().allocate(), first);
  EXPECT_EQ(holder().shared(), first);
  EXPECT_EQ(Counted::made, 1);
  EXPECT_EQ(Counted::initialised, 0) << "allocating does not initialise";
}

TEST_F(SharedInstanceOfAClass, IsMadeAfreshAfterAPurge) {
  holder().shared();
  holder().purge();
  EXPECT_EQ(holder().sharedNoSynch(), nullptr);
  EXPECT_NE(holder().shared(), nullptr);
  EXPECT_EQ(Counted::made, 2);
  EXPECT_EQ(Counted::initialised, 2);
}

TEST_F(SharedInstanceOfAClass, MayBePurgedWithoutHavingBeenMade) {
  holder().purge();
  holder().purge();
  EXPECT_NE(holder().shared(), nullptr);
}

TEST_F(SharedInstanceOfAClass, IsAbsentUntilItCanBeMade) {
  Counted::available = false;
  EXPECT_EQ(holder().shared(), nullptr);
  EXPECT_EQ(holder().allocate(), nullptr);
  Counted::available = true;
  EXPECT_NE(holder().shared(), nullptr);
  EXPECT_EQ(Counted::initialised, 1);
}

TEST_F(SharedInstanceOfAClass, MayBeAskedForWhileItIsInitialised) {
  static Counted* seen = nullptr;
  Counted::duringInit = [] { seen = SharedInstance<Counted>::holder().sharedSynch(); };
  EXPECT_EQ(holder().shared(), seen);
  EXPECT_EQ(Counted::made, 1);
}

TEST_F(SharedInstanceOfAClass, IsOneObjectForManyThreads) {
  std::vector<Counted*> seen(16);
  std::vector<std::thread> threads;
  for (Counted*& object : seen) {
    threads.emplace_back([&object] { object = SharedInstance<Counted>::holder().shared(); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(seen, std::vector<Counted*>(16, holder().shared()));
  EXPECT_EQ(Counted::made, 1);
  EXPECT_EQ(Counted::initialised, 1);
}

}  // namespace
}  // namespace zovk
