#include <atomic>
#include <thread>

#include "fixtures/EngineFixture.h"

namespace zovk {
namespace {

constexpr std::size_t kThreads = 4;
constexpr std::size_t kRequests = 50;  // of each thread

// Show requests from several threads, while the main thread shows and ends popups.
class DisplayThread : public EngineFixture {
 protected:
  ~DisplayThread() override {
    for (auto& thread : threads_) thread.join();
  }
  void requestFromManyThreads(const std::string& scene) {
    for (std::size_t t = 0; t < kThreads; ++t) {
      threads_.emplace_back([this, t, scene] {
        for (std::size_t i = 0; i < kRequests; ++i) {
          engine().showPopup(
              scene, 0,
              [&told = told_[t * kRequests + i]](std::int32_t, const std::string&) { ++told; });
        }
      });
    }
  }
  // Plays the pages until the callback of every request was called.
  void playUntilAllAreTold() {
    memory().scheduler.runUntil(
        [this] {
          if (const auto view = page(); view != nullptr && !view->loads().empty()) {
            view->postMessage("ZOVKPopup", boost::json::value(resultText("skip")));
          }
          return std::all_of(told_.begin(), told_.end(), [](const auto& n) { return n > 0; });
        },
        "the answers", std::chrono::seconds(30));
    for (auto& thread : threads_) thread.join();
    threads_.clear();
    memory().scheduler.runUntil([this] { return memory().urlSession.isIdle(); }, "the session");
    settle();
  }
  void expectEachToldOnceAndNothingLeft() {
    for (const auto& told : told_) EXPECT_EQ(told, 1);
    EXPECT_TRUE(engine().popupCache().empty());
    EXPECT_FALSE(engine().isPopuping());
    EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
    EXPECT_EQ(memory().scheduler.activeTimerCount(), 0U);
  }

 private:
  std::vector<std::atomic<int>> told_ = std::vector<std::atomic<int>>(kThreads * kRequests);
  std::vector<std::thread> threads_;
};

TEST_F(DisplayThread, RequestsFromManyThreadsAreEachAnsweredOnce) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  requestFromManyThreads("lobby");
  playUntilAllAreTold();
  expectEachToldOnceAndNothingLeft();
}

TEST_F(DisplayThread, ConditionsAnsweredOnTheSessionsThreadAreEachAnsweredOnce) {
  engine().setMergePopupArr(listOf({conditional("asked")}));
  memory().urlSession.useThread();
  memory().urlSession.setHandler([count = std::make_shared<std::atomic<int>>()](
                                     const MemoryRequest&) -> std::optional<MemoryAnswer> {
    const bool wanted = ++*count % 3 != 0;
    return MemoryAnswer{200, wanted ? R"({"need_popup":1})" : R"({"need_popup":0})", std::nullopt,
                        ""};
  });
  requestFromManyThreads("asked");
  playUntilAllAreTold();
  expectEachToldOnceAndNothingLeft();
}

}  // namespace
}  // namespace zovk
