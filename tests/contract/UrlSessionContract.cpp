#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "Backend.h"

namespace zovk {
namespace {

using testing::Optional;

constexpr std::chrono::seconds kBound{30};

template <class Result>
struct Pending {
  std::shared_ptr<UrlTask> task;
  std::future<Result> end;

  Result wait() {
    if (end.wait_for(kBound) != std::future_status::ready) {
      throw std::runtime_error("no completion");
    }
    return end.get();
  }
};

class UrlSessionContract : public testing::Test {
 protected:
  Pending<DataResult> data(const std::string& url) {
    auto promise = std::make_shared<std::promise<DataResult>>();
    auto end = promise->get_future();
    UrlRequest request;
    request.url = url;
    auto task = backend.session().dataTask(
        request, [promise](const DataResult& result) { promise->set_value(result); });
    return {std::move(task), std::move(end)};
  }
  DataResult fetch(const std::string& url) {
    auto pending = data(url);
    pending.task->resume();
    return pending.wait();
  }

  UrlBackend backend;
};

TEST_F(UrlSessionContract, GivesTheBodyAndTheStatus) {
  const std::string url = backend.serve("/page", 200, "text");
  const DataResult result = fetch(url);
  EXPECT_FALSE(result.error);
  EXPECT_EQ(result.status, 200);
  EXPECT_EQ(result.url, url);
  EXPECT_THAT(result.body, Optional(std::string("text")));
}

TEST_F(UrlSessionContract, AnyStatusIsASuccess) {
  const DataResult result = fetch(backend.serve("/broken", 500, "<h1>Sorry</h1>"));
  EXPECT_FALSE(result.error);
  EXPECT_EQ(result.status, 500);
  EXPECT_THAT(result.body, Optional(std::string("<h1>Sorry</h1>")));
}

TEST_F(UrlSessionContract, AnEmptyBodyIsABody) {
  EXPECT_THAT(fetch(backend.serve("/empty", 200, "")).body, Optional(std::string()));
}

TEST_F(UrlSessionContract, AServerThatIsNotThereIsAnError) {
  const std::string url = backend.unreachableUrl();
  const DataResult result = fetch(url);
  EXPECT_TRUE(result.error);
  EXPECT_FALSE(result.body);
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.url, url);
}

TEST_F(UrlSessionContract, AnAddressThatCannotBeParsedIsAnError) {
  for (const char* url : {"", "nonsense", "http://", "://a", "http://server.example/a b",
                          "http://server.example/a?b\n", "http://[server.example/a",
                          "http://server.example/a%00", "ftp://server.example/a", "file:///a"}) {
    const DataResult result = fetch(url);
    EXPECT_TRUE(result.error) << url;
    EXPECT_FALSE(result.body) << url;
    EXPECT_EQ(result.url, url);
  }
}

TEST_F(UrlSessionContract, AnAddressIsSentAsItIsReadForTheSignature) {
  const std::string plain = backend.serve("/vip", 200, "text");
  const std::string base = plain.substr(0, plain.size() - 4);
  const DataResult result = fetch(base + "/x/.././vip");
  EXPECT_THAT(result.body, Optional(std::string("text")));
  EXPECT_EQ(result.url, plain);
}

TEST_F(UrlSessionContract, NothingIsSentBeforeResume) {
  bool called = false;
  {
    UrlRequest request;
    request.url = backend.serve("/page", 200, "text");
    const auto task =
        backend.session().dataTask(request, [&](const DataResult&) { called = true; });
    fetch(request.url);
  }
  EXPECT_FALSE(called);
}

TEST_F(UrlSessionContract, ATaskThatIsResumedTwiceCompletesOnce) {
  const std::string url = backend.serve("/page", 200, "text");
  auto pending = data(url);  // a second completion would break its promise
  pending.task->resume();
  pending.task->resume();
  EXPECT_FALSE(pending.wait().error);
  pending.task->resume();
  EXPECT_FALSE(fetch(url).error);
}

TEST_F(UrlSessionContract, ATaskLivesWithoutItsMaker) {
  auto pending = data(backend.serve("/page", 200, "text"));
  pending.task->resume();
  pending.task.reset();
  EXPECT_THAT(pending.wait().body, Optional(std::string("text")));
}

TEST_F(UrlSessionContract, CompletionsNeverRunOnTheMainThread) {
  std::promise<std::thread::id> thread;
  UrlRequest request;
  request.url = backend.serve("/page", 200, "text");
  const auto task = backend.session().dataTask(
      request, [&](const DataResult&) { thread.set_value(std::this_thread::get_id()); });
  task->resume();
  EXPECT_NE(thread.get_future().get(), std::this_thread::get_id());
}

TEST_F(UrlSessionContract, CompletionsRunOneAfterAnother) {
  const std::string url = backend.serve("/page", 200, "text");
  int inside = 0;  // of one thread: the sanitizer would tell otherwise
  int count = 0;
  std::promise<void> all;
  std::vector<std::shared_ptr<UrlTask>> tasks;
  for (int i = 0; i < 5; ++i) {
    UrlRequest request;
    request.url = url;
    tasks.push_back(backend.session().dataTask(request, [&](const DataResult&) {
      EXPECT_EQ(++inside, 1);
      --inside;
      if (++count == 5) all.set_value();
    }));
  }
  for (const auto& task : tasks) task->resume();
  EXPECT_EQ(all.get_future().wait_for(kBound), std::future_status::ready);
}

TEST_F(UrlSessionContract, ACompletionMaySendTheNextRequest) {
  const std::string url = backend.serve("/page", 200, "text");
  auto second = data(url);
  UrlRequest request;
  request.url = url;
  const auto first = backend.session().dataTask(
      request, [task = second.task](const DataResult&) { task->resume(); });
  first->resume();
  EXPECT_FALSE(second.wait().error);
}

TEST_F(UrlSessionContract, CancelEndsATransferWithAnError) {
  auto pending = data(backend.silentUrl());
  pending.task->resume();
  pending.task->cancel();
  const DataResult result = pending.wait();
  EXPECT_THAT(result.error, Optional(std::string("cancelled")));
  EXPECT_FALSE(result.body);
}

TEST_F(UrlSessionContract, ATaskThatWasCancelledBeforeItWasResumedEndsWithAnError) {
  auto pending = data(backend.serve("/page", 200, "text"));
  pending.task->cancel();
  pending.task->resume();
  EXPECT_THAT(pending.wait().error, Optional(std::string("cancelled")));
}

TEST_F(UrlSessionContract, CancelAfterTheEndDoesNothing) {
  const std::string url = backend.serve("/page", 200, "text");
  auto pending = data(url);
  pending.task->resume();
  EXPECT_FALSE(pending.wait().error);
  pending.task->cancel();
  EXPECT_FALSE(fetch(url).error);
}

TEST_F(UrlSessionContract, ACompletionIsDroppedOnceItHasRun) {
  const std::string url = backend.serve("/page", 200, "text");
  auto held = std::make_shared<int>(1);
  UrlRequest request;
  request.url = url;
  const auto task = backend.session().dataTask(request, [held](const DataResult&) {});
  task->resume();
  fetch(url);
  backend.shutDown();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(UrlSessionContract, ADownloadIsAFileWhileItsCompletionRuns) {
  std::promise<std::pair<DownloadResult, std::optional<std::string>>> end;
  const std::string url = backend.serve("/file", 404, "not here");
  const auto task = backend.session().downloadTask(url, [&](const DownloadResult& result) {
    end.set_value({result, backend.files().read(result.path.value_or(""))});
  });
  task->resume();
  const auto [result, text] = end.get_future().get();
  EXPECT_FALSE(result.error);
  EXPECT_EQ(result.status, 404);
  EXPECT_EQ(result.url, url);
  EXPECT_THAT(text, Optional(std::string("not here")));
  fetch(url);  // by its end the other completion has returned
  EXPECT_FALSE(backend.files().exists(*result.path));
}

TEST_F(UrlSessionContract, ADownloadThatFailsHasNoFile) {
  for (const std::string& url : {backend.unreachableUrl(), std::string()}) {
    std::promise<DownloadResult> end;
    const auto task = backend.session().downloadTask(
        url, [&](const DownloadResult& result) { end.set_value(result); });
    task->resume();
    const DownloadResult result = end.get_future().get();
    EXPECT_TRUE(result.error);
    EXPECT_FALSE(result.path);
  }
}

TEST_F(UrlSessionContract, ShutDownDropsWhatIsUnderWayWithoutCallingBack) {
  auto held = std::make_shared<int>(0);
  UrlRequest request;
  request.url = backend.silentUrl();
  const auto task = backend.session().dataTask(request, [held](const DataResult&) { ++*held; });
  task->resume();
  backend.shutDown();
  EXPECT_EQ(*held, 0);
  EXPECT_EQ(held.use_count(), 1);
  task->cancel();
  backend.shutDown();
}

TEST_F(UrlSessionContract, ManyRequestsAtOnceAllCompleteOnce) {
  constexpr std::size_t kCount = 300;
  const std::string url = backend.serve("/page", 200, "text");
  std::vector<Pending<DataResult>> all;  // a second completion would break its promise
  for (std::size_t i = 0; i < kCount; ++i) all.push_back(data(url));
  for (const auto& pending : all) pending.task->resume();
  for (auto& pending : all) EXPECT_THAT(pending.wait().body, Optional(std::string("text")));
}

TEST_F(UrlSessionContract, ManyRequestsThatAreCancelledAllCompleteOnceWithAnError) {
  constexpr std::size_t kCount = 300;
  std::vector<Pending<DataResult>> all;
  for (std::size_t i = 0; i < kCount; ++i) all.push_back(data(backend.silentUrl()));
  for (const auto& pending : all) pending.task->resume();
  for (const auto& pending : all) pending.task->cancel();
  for (auto& pending : all) {
    EXPECT_THAT(pending.wait().error, Optional(std::string("cancelled")));
  }
}

TEST_F(UrlSessionContract, ShutDownDropsTheManyThatWaitToo) {
  constexpr long kCount = 300;
  auto held = std::make_shared<int>(0);
  UrlRequest request;
  request.url = backend.silentUrl();
  for (long i = 0; i < kCount; ++i) {
    backend.session().dataTask(request, [held](const DataResult&) { ++*held; })->resume();
  }
  backend.shutDown();
  EXPECT_EQ(*held, 0);
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(UrlSessionContract, TasksResumedAfterShutDownAreDropped) {
  auto held = std::make_shared<int>(0);
  UrlRequest request;
  request.url = backend.serve("/page", 200, "text");
  const auto task = backend.session().dataTask(request, [held](const DataResult&) { ++*held; });
  backend.shutDown();
  task->resume();
  EXPECT_EQ(*held, 0);
}

}  // namespace
}  // namespace zovk
