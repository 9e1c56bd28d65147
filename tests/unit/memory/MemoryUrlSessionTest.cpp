#include <atomic>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryUrlSession.h"

namespace zovk {
namespace {

using namespace std::chrono_literals;

class MemorySession : public testing::Test {
 protected:
  std::shared_ptr<UrlTask> send(const std::string& url) {
    UrlRequest request;
    request.url = url;
    auto task = session.dataTask(request, [this](const DataResult& r) { results.push_back(r); });
    task->resume();
    return task;
  }

  MemoryFileSystem files;
  MemoryUrlSession session{files};
  std::vector<DataResult> results;
};

TEST_F(MemorySession, RecordsWhatIsSent) {
  session.dataTask({"http://host/a", "POST", "body", 15s}, nullptr)->resume();
  session.downloadTask("http://host/b", nullptr)->resume();
  session.downloadTask("http://host/never", nullptr);
  ASSERT_EQ(session.requestCount(), 2u);
  EXPECT_EQ(session.createdCount(), 3u);
  const auto first = session.request(0);
  EXPECT_EQ(first.kind, MemoryRequest::Kind::kData);
  EXPECT_EQ(first.url, "http://host/a");
  EXPECT_EQ(first.method, "POST");
  EXPECT_EQ(first.body, "body");
  EXPECT_EQ(first.timeout, 15s);
  EXPECT_EQ(session.request(1).kind, MemoryRequest::Kind::kDownload);
  EXPECT_EQ(session.requestsTo("/b").size(), 1u);
  EXPECT_EQ(session.pendingCount(), 2u);
}

TEST_F(MemorySession, DeliversAnswersInTheirOrderWhenAskedTo) {
  send("http://host/a");
  send("http://host/b");
  session.answer("/b", 500, "bad");
  session.answer(0, 200, "good");
  EXPECT_TRUE(results.empty());
  EXPECT_FALSE(session.isIdle());
  EXPECT_EQ(session.deliver(), 2u);
  EXPECT_TRUE(session.isIdle());
  ASSERT_EQ(results.size(), 2u);
  EXPECT_EQ(results[0].url, "http://host/b");
  EXPECT_EQ(results[0].status, 500);
  EXPECT_EQ(results[0].body, "bad");
  EXPECT_FALSE(results[0].error);
  EXPECT_EQ(results[1].body, "good");
  EXPECT_TRUE(session.request(0).delivered);
  EXPECT_EQ(session.deliver(), 0u);
}

TEST_F(MemorySession, NamesTheAddressThatAnsweredAfterARedirect) {
  send("http://host/a");
  MemoryAnswer answer;
  answer.url = "http://elsewhere/";
  session.answer(0, answer);
  session.deliver();
  EXPECT_EQ(results.at(0).url, "http://elsewhere/");
}

TEST_F(MemorySession, FailsARequestWithoutStatusAndBody) {
  send("http://host/a");
  session.fail("/a", "no route");
  session.deliver();
  EXPECT_EQ(results.at(0).error, "no route");
  EXPECT_EQ(results.at(0).status, 0);
  EXPECT_FALSE(results.at(0).body);
  EXPECT_EQ(results.at(0).url, "http://host/a");
}

TEST_F(MemorySession, RefusesToAnswerWhatDoesNotWait) {
  send("http://host/a");
  EXPECT_THROW(session.answer(1, 200, ""), std::out_of_range);
  EXPECT_THROW(session.answer("/b", 200, ""), std::out_of_range);
  session.answer(0, 200, "");
  EXPECT_THROW(session.answer(0, 200, ""), std::logic_error);
  EXPECT_THROW(session.answer("/a", 200, ""), std::out_of_range);
}

TEST_F(MemorySession, AnswersTheOldestOfSeveralEqualRequests) {
  send("http://host/a");
  send("http://host/a");
  session.answer("/a", 200, "first");
  EXPECT_TRUE(session.request(0).answered);
  EXPECT_FALSE(session.request(1).answered);
}

TEST_F(MemorySession, FailsAddressesThatCannotBeParsed) {
  for (const char* url : {"", "host/path", "http://", "http://host/a b", "://x"}) send(url);
  session.deliver();
  ASSERT_EQ(results.size(), 5u);
  for (const auto& result : results) EXPECT_TRUE(result.error) << result.url;
}

TEST_F(MemorySession, EndsACancelledRequestWithAnError) {
  const auto task = send("http://host/a");
  task->cancel();
  task->cancel();
  session.deliver();
  ASSERT_EQ(results.size(), 1u);
  EXPECT_TRUE(results[0].error);
}

TEST_F(MemorySession, EndsARequestThatWasCancelledBeforeItStarted) {
  const auto task = session.dataTask({"http://host/a", "GET", {}, {}},
                                     [this](const DataResult& r) { results.push_back(r); });
  task->cancel();
  EXPECT_EQ(session.deliver(), 0u);
  task->resume();
  task->resume();
  EXPECT_EQ(session.deliver(), 1u);
  EXPECT_TRUE(results.at(0).error);
}

TEST_F(MemorySession, AnswersByItselfWithAHandler) {
  session.setHandler([](const MemoryRequest& request) -> std::optional<MemoryAnswer> {
    if (request.url.find("/a") == std::string::npos) return std::nullopt;
    MemoryAnswer answer;
    answer.body = "automatic";
    return answer;
  });
  send("http://host/a");
  send("http://host/b");
  session.deliver();
  ASSERT_EQ(results.size(), 1u);
  EXPECT_EQ(results[0].body, "automatic");
  EXPECT_EQ(session.pendingCount(), 1u);
}

TEST_F(MemorySession, KeepsADownloadOnlyWhileItsCompletionRuns) {
  std::string path;
  session
      .downloadTask("http://host/page",
                    [&](const DownloadResult& result) {
                      ASSERT_TRUE(result.path);
                      path = *result.path;
                      EXPECT_EQ(files.read(path), "<html>");
                    })
      ->resume();
  session.answer(0, 404, "<html>");
  EXPECT_EQ(session.deliver(), 1u);
  EXPECT_EQ(path, "/tmp/download-1");
  EXPECT_FALSE(files.exists(path));
}

TEST_F(MemorySession, HasNoFileForADownloadThatFailed) {
  bool called = false;
  session
      .downloadTask("http://host/page",
                    [&](const DownloadResult& result) {
                      called = true;
                      EXPECT_TRUE(result.error);
                      EXPECT_FALSE(result.path);
                    })
      ->resume();
  session.fail(0, "lost");
  session.deliver();
  EXPECT_TRUE(called);
}

TEST_F(MemorySession, DeliversWhatACompletionSendsToo) {
  session.setHandler([](const MemoryRequest&) { return MemoryAnswer{}; });
  session
      .dataTask({"http://host/a", "GET", {}, {}},
                [this](const DataResult&) {
                  send("http://host/b");
                  EXPECT_EQ(session.deliver(), 0u);  // one after another, never inside
                  EXPECT_TRUE(results.empty());
                })
      ->resume();
  EXPECT_EQ(session.deliver(), 2u);
  EXPECT_EQ(results.size(), 1u);
}

TEST_F(MemorySession, DropsCompletionsOnceTheyHaveRun) {
  const auto held = std::make_shared<int>(0);
  const auto task =
      session.dataTask({"http://host/a", "GET", {}, {}}, [held](const DataResult&) {});
  task->resume();
  session.answer(0, 200, "");
  session.deliver();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(MemorySession, DropsWhatWaitsWhenItShutsDown) {
  const auto held = std::make_shared<int>(0);
  const auto task =
      session.dataTask({"http://host/a", "GET", {}, {}}, [held](const DataResult&) { FAIL(); });
  task->resume();
  send("http://host/b");
  session.answer("/b", 200, "");
  session.shutDown();
  session.shutDown();
  EXPECT_EQ(session.deliver(), 0u);
  EXPECT_EQ(held.use_count(), 1);
  EXPECT_TRUE(results.empty());
}

TEST(MemorySessionTask, MayOutliveItsSession) {
  MemoryFileSystem files;
  auto session = std::make_unique<MemoryUrlSession>(files);
  const auto task =
      session->dataTask({"http://host/a", "GET", {}, {}}, [](const DataResult&) { FAIL(); });
  session.reset();
  task->resume();
  task->cancel();
}

TEST(MemorySessionThread, RunsCompletionsInTurnOnAThreadOfItsOwn) {
  MemoryFileSystem files;
  MemoryScheduler scheduler;
  MemoryUrlSession session(files);
  session.useThread();
  session.useThread();
  session.setHandler([](const MemoryRequest&) { return MemoryAnswer{}; });
  std::atomic<int> running = 0;
  std::atomic<int> done = 0;
  const auto completion = [&](const DataResult&) {
    EXPECT_EQ(++running, 1);
    EXPECT_FALSE(scheduler.isMainThread());
    scheduler.sync([] {});
    --running;
    ++done;
  };
  for (int i = 0; i < 20; ++i) {
    session.dataTask({"http://host/a", "GET", {}, {}}, completion)->resume();
  }
  EXPECT_EQ(session.deliver(), 0u);
  scheduler.runUntil([&] { return done == 20 && session.isIdle(); }, "twenty completions");
}

TEST(MemorySessionThread, EndsWhileACompletionWaitsForTheMainThread) {
  MemoryFileSystem files;
  MemoryScheduler scheduler;
  MemoryUrlSession session(files);
  session.useThread();
  session
      .dataTask({"http://host/a", "GET", {}, {}},
                [&](const DataResult&) { scheduler.sync([] { FAIL(); }); })
      ->resume();
  session.answer(0, 200, "");
  while (scheduler.pendingTaskCount() == 0) std::this_thread::yield();
  scheduler.shutDown();
  session.shutDown();
}

}  // namespace
}  // namespace zovk
