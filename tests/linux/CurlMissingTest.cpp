// Runs with a file in the place of libcurl that is not a library; CMakeLists.txt puts it there.
#include <future>
#include <memory>
#include <string>

#include <gmock/gmock.h>

#include "UrlFetch.h"
#include "platform/linux/http/CurlUrlSession.h"

namespace zovk {
namespace {

using testing::HasSubstr;
using testing::Optional;
using testing::StartsWith;

const std::string kUrl = "http://127.0.0.1:1/popups.json";

auto saysWhatIsMissing() {
  return Optional(AllOf(StartsWith("libcurl cannot be used: "), HasSubstr("libcurl.so.4")));
}

TEST(CurlMissing, EndsEveryRequestWithTheReason) {
  CurlUrlSession session;
  for (int i = 0; i < 3; ++i) {
    const DataResult result = fetch(session, get(kUrl));
    EXPECT_THAT(result.error, saysWhatIsMissing());
    EXPECT_EQ(result.url, kUrl);
    EXPECT_EQ(result.status, 0);
  }
}

TEST(CurlMissing, EndsEveryDownloadWithTheReason) {
  CurlUrlSession session;
  std::promise<DownloadResult> end;
  const auto task =
      session.downloadTask(kUrl, [&end](const DownloadResult& result) { end.set_value(result); });
  task->resume();
  EXPECT_THAT(end.get_future().get().error, saysWhatIsMissing());
}

TEST(CurlMissing, LetsTheSessionEndAndAnswersNothingAfterwards) {
  CurlUrlSession session;
  fetch(session, get(kUrl));
  session.shutDown();
  bool called = false;
  session.dataTask(get(kUrl), [&called](const DataResult&) { called = true; })->resume();
  EXPECT_FALSE(called);
}

TEST(CurlMissing, EndsACompletionThatLetsGoOfTheSession) {
  auto session = std::make_unique<CurlUrlSession>();
  std::promise<void> gone;
  const auto task = session->dataTask(get(kUrl), [&](const DataResult&) {
    session.reset();
    gone.set_value();
  });
  task->resume();
  gone.get_future().get();
  EXPECT_EQ(session, nullptr);
}

}  // namespace
}  // namespace zovk
