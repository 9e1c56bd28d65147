#include <atomic>
#include <chrono>
#include <future>

#include <gmock/gmock.h>

#include "LoopbackServer.h"
#include "PollWait.h"
#include "UrlFetch.h"
#include "platform/linux/http/CurlUrlSession.h"

namespace zovk {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::HasSubstr;
using testing::Optional;
using testing::StartsWith;

/// A server that sends a byte now and then, and never all.
class CurlSpeedTest : public testing::Test {
 protected:
  ~CurlSpeedTest() override { over = true; }

  std::string drip() {
    return server.handle("/drip", [this](const auto&, httplib::Response& response) {
      response.set_chunked_content_provider("text/plain",
                                            [this](std::size_t, httplib::DataSink& sink) {
                                              waitReadable(-1, milliseconds(20));
                                              return !over && sink.write("x", 1);
                                            });
    });
  }
  static UrlRequest post(const std::string& url) {
    UrlRequest request = get(url);
    request.method = "POST";
    return request;
  }
  static CurlSessionSettings patient() {
    CurlSessionSettings settings;
    settings.longestStall = settings.longestPost = std::chrono::minutes(1);
    settings.lowestSpeed = 1;
    return settings;
  }

  std::atomic<bool> over{false};
  LoopbackServer server;
};

TEST(CurlSessionDefaults, EndASlowServiceWithinSeconds) {
  const CurlSessionSettings settings;
  EXPECT_EQ(settings.longestStall, seconds(15));
  EXPECT_EQ(settings.longestPost, seconds(15));
  EXPECT_EQ(settings.lowestSpeed, 50);
  EXPECT_EQ(settings.slowestTime, seconds(30));
  EXPECT_EQ(settings.mostDataRequests, 8U);
  EXPECT_EQ(settings.mostDownloadsOfAHost, 6U);
  EXPECT_EQ(settings.mostDownloadDescriptors, 28U);
}

TEST_F(CurlSpeedTest, APostEndsInTimeHoweverItsAnswerDrips) {
  CurlSessionSettings settings = patient();
  settings.longestPost = milliseconds(500);
  CurlUrlSession session(settings);
  const auto start = std::chrono::steady_clock::now();
  const DataResult result = fetch(session, post(drip()));
  EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(500));
  EXPECT_THAT(result.error, Optional(std::string("Timeout was reached")));
  EXPECT_FALSE(result.body);
}

TEST_F(CurlSpeedTest, APostThatWaitsForItsTurnLosesNoTime) {
  CurlSessionSettings settings = patient();
  settings.longestPost = milliseconds(500);
  settings.mostDataRequests = 1;
  CurlUrlSession session(settings);
  Fetch slow = beginFetch(session, post(drip()));
  Fetch waiting = beginFetch(session, post(server.serve("/page", 200, "text")));
  EXPECT_TRUE(slow.wait().error);
  EXPECT_THAT(waiting.wait().body, Optional(std::string("text")));
}

TEST_F(CurlSpeedTest, AGetMayTakeLongerThanAPost) {
  CurlSessionSettings settings = patient();
  settings.longestPost = milliseconds(1);
  CurlUrlSession session(settings);
  EXPECT_FALSE(fetch(session, get(server.serve("/page", 200, "text"))).error);
}

TEST_F(CurlSpeedTest, AGetThatDripsTooSlowlyEnds) {
  CurlSessionSettings settings = patient();
  settings.lowestSpeed = 1000;
  settings.slowestTime = seconds(1);
  CurlUrlSession session(settings);
  EXPECT_THAT(fetch(session, get(drip())).error, Optional(HasSubstr("too slow")));
}

TEST_F(CurlSpeedTest, ADownloadThatDripsTooSlowlyEnds) {
  CurlSessionSettings settings = patient();
  settings.lowestSpeed = 1000;
  settings.slowestTime = seconds(1);
  CurlUrlSession session(settings);
  std::promise<DownloadResult> end;
  const auto task =
      session.downloadTask(drip(), [&end](const DownloadResult& result) { end.set_value(result); });
  task->resume();
  const DownloadResult result = end.get_future().get();
  EXPECT_THAT(result.error, Optional(HasSubstr("too slow")));
  EXPECT_FALSE(result.path);
}

TEST_F(CurlSpeedTest, ADownloadThatStandsStillEnds) {
  CurlSessionSettings settings = patient();
  settings.longestStall = milliseconds(200);
  CurlUrlSession session(settings);
  std::promise<DownloadResult> end;
  const auto task = session.downloadTask(
      server.url("/silent"), [&end](const DownloadResult& result) { end.set_value(result); });
  task->resume();
  EXPECT_THAT(end.get_future().get().error, Optional(StartsWith("Timeout was reached")));
}

}  // namespace
}  // namespace zovk
