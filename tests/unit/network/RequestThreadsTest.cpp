#include <atomic>
#include <thread>

#include "unit/network/NetworkFixture.h"

namespace zovk {
namespace {

using RequestThreads = NetworkFixture;

TEST_F(RequestThreads, SendAtOnceAndAreAllAnsweredOnTheSessionsThread) {
  constexpr int kThreads = 8;
  constexpr int kRequests = 50;
  std::atomic<int> answered{0};
  std::atomic<bool> wrongThread{false};
  const auto mainThread = std::this_thread::get_id();
  session().setHandler([](const MemoryRequest&) { return MemoryAnswer{200, "ok", {}, {}}; });
  session().useThread();
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&] {
      for (int n = 0; n < kRequests; ++n) {
        std::make_shared<ZOVKPopupNetwork>(session())->startRequest(
            0, params("https://s.example/x"),
            [&](bool success, const std::optional<std::string>& data) {
              if (std::this_thread::get_id() == mainThread) wrongThread = true;
              if (success && data == "ok") ++answered;
            });
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  memory().scheduler.runUntil([&] { return answered == kThreads * kRequests; }, "all answers");
  EXPECT_EQ(session().requestCount(), std::size_t{kThreads * kRequests});
  EXPECT_FALSE(wrongThread);
}

/// A session whose tasks do nothing but note who holds them; a test sees how long they live.
class IdleSession final : public UrlSession {
 public:
  std::vector<std::weak_ptr<UrlTask>> tasks;
  std::vector<long> holdersAtTheStart;  ///< Of each task that was resumed.

  std::shared_ptr<UrlTask> dataTask(UrlRequest, std::function<void(const DataResult&)>) override {
    return make();
  }
  std::shared_ptr<UrlTask> downloadTask(std::string,
                                        std::function<void(const DownloadResult&)>) override {
    return make();
  }

 private:
  class Task final : public UrlTask, public std::enable_shared_from_this<Task> {
   public:
    explicit Task(IdleSession& session) : session_(session) {}
    void resume() override { session_.holdersAtTheStart.push_back(weak_from_this().use_count()); }
    void cancel() override {}

   private:
    IdleSession& session_;
  };
  std::shared_ptr<UrlTask> make() {
    auto task = std::make_shared<Task>(*this);
    tasks.push_back(task);
    return task;
  }
};

using RequestTasks = NetworkFixture;

TEST_F(RequestTasks, AreKeptForGoodAndDownloadTasksAreNot) {
  IdleSession idle;
  std::make_shared<ZOVKPopupNetwork>(idle)->startRequest(0, params("https://s.example/x"), nullptr);
  std::make_shared<ZOVKPopupNetwork>(idle)->startDownload("https://s.example/page", nullptr);
  ASSERT_EQ(idle.tasks.size(), 2U);
  EXPECT_FALSE(idle.tasks[0].expired());
  EXPECT_TRUE(idle.tasks[1].expired());
}

TEST_F(RequestTasks, AreKeptBeforeTheyStart) {
  IdleSession idle;
  std::make_shared<ZOVKPopupNetwork>(idle)->startRequest(0, params("https://s.example/x"), nullptr);
  EXPECT_THAT(idle.holdersAtTheStart, ::testing::ElementsAre(2)) << "the sender and the list";
}

}  // namespace
}  // namespace zovk
