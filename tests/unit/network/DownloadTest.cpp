#include "unit/network/NetworkFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Pair;

class Download : public NetworkFixture {
 protected:
  /// Starts a download whose completion also reads the file.
  void start(const std::string& url) {
    network().startDownload(url, [this](bool success, const std::optional<std::string>& path) {
      results_.emplace_back(success, path);
      if (path) contents_.push_back(memory().files.text(*path).value_or("gone"));
    });
  }
  std::vector<std::string> contents_;
};

TEST_F(Download, UsesTheAddressAsItIs) {
  start("https://pages.example/a.html?x=1#y");
  ASSERT_EQ(session().requestCount(), 1U);
  const MemoryRequest sent = session().request(0);
  EXPECT_EQ(sent.kind, MemoryRequest::Kind::kDownload);
  EXPECT_EQ(sent.url, "https://pages.example/a.html?x=1#y");
  EXPECT_EQ(sent.method, "GET");
  EXPECT_EQ(sent.timeout, std::nullopt);
  EXPECT_THAT(results_, IsEmpty());
}

TEST_F(Download, GivesAFileThatLivesUntilTheCompletionReturns) {
  start("https://pages.example/a.html");
  EXPECT_THAT(lines(), ElementsAre(MatchesRegex("D startDownload: Start download, "
                                                "urlStr:https://pages.example/a.html, "
                                                "complete:0x[0-9a-f]+")));
  log().clear();
  session().answer(0, 200, "page");
  session().deliver();
  ASSERT_THAT(results_, ElementsAre(Pair(true, ::testing::Ne(std::nullopt))));
  EXPECT_THAT(contents_, ElementsAre("page"));
  EXPECT_EQ(memory().files.text(*results_[0].second), std::nullopt);
  EXPECT_THAT(lines(), ElementsAre("D startDownload: Download from "
                                   "url:https://pages.example/a.html, finished, file path:" +
                                   *results_[0].second));
}

TEST_F(Download, OfAnErrorPageIsASuccess) {
  start("https://pages.example/a.html");
  session().answer(0, 404, "not found");
  session().deliver();
  EXPECT_TRUE(results_.at(0).first);
  EXPECT_THAT(contents_, ElementsAre("not found"));
}

TEST_F(Download, FailsWithATransportError) {
  start("https://pages.example/a.html");
  log().clear();
  session().fail(0, "connection lost: 100%s");
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(false, std::nullopt)));
  EXPECT_THAT(lines(), ElementsAre("E Download from url:https://pages.example/a.html, "
                                   "error:connection lost: 100%s"));
}

TEST_F(Download, WithoutAnAddressFailsAtOnceAndOnceMoreAfterTheAttempt) {
  start("");
  EXPECT_THAT(results_, ElementsAre(Pair(false, std::nullopt)));
  EXPECT_THAT(lines(), ElementsAre(MatchesRegex("D startDownload: Start download, urlStr:, "
                                                "complete:0x[0-9a-f]+"),
                                   "D startDownload: Url illegal"));
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(false, std::nullopt), Pair(false, std::nullopt)));
  EXPECT_THAT(lines().back(), ::testing::StartsWith("E Download from url:, error:"));
  session().deliver();
  EXPECT_EQ(results_.size(), 2U);
}

TEST_F(Download, WithoutAnAddressAndACompletionIsAttempted) {
  network().startDownload("", nullptr);
  session().deliver();
  EXPECT_EQ(lines()[0], "D startDownload: Start download, urlStr:, complete:(nil)");
  EXPECT_EQ(lines()[1], "D startDownload: Url illegal");
  EXPECT_EQ(lines().back(), "D startDownload: Callback is Null");
}

TEST_F(Download, WithoutACompletionSaysSo) {
  network().startDownload("https://pages.example/a.html", nullptr);
  session().answer(0, 200, "page");
  session().deliver();
  EXPECT_EQ(lines().back(), "D startDownload: Callback is Null");
}

TEST_F(Download, WithoutACompletionLeavesThatOfAnEarlierCallWaiting) {
  start("https://pages.example/first");
  network().startDownload("https://pages.example/second", nullptr);
  session().answer("second", 200, "2");
  session().deliver();
  EXPECT_THAT(contents_, ElementsAre("2"));
  session().answer("first", 200, "1");
  session().deliver();
  EXPECT_THAT(contents_, ElementsAre("2"));
  EXPECT_EQ(lines().back(), "D startDownload: Callback is Null");
}

TEST_F(Download, KeepsItsObjectUntilItsCompletionHasRun) {
  const std::weak_ptr<ZOVKPopupNetwork> weak = network_;
  start("https://pages.example/a.html");
  network_.reset();
  EXPECT_FALSE(weak.expired());
  session().answer(0, 200, "page");
  session().deliver();
  EXPECT_EQ(results_.size(), 1U);
  EXPECT_TRUE(weak.expired());
}

TEST_F(Download, ForgetsItsCompletionWhenItHasRun) {
  const auto held = std::make_shared<int>(0);
  network().startDownload("https://pages.example/a.html",
                          [held](bool, const std::optional<std::string>&) {});
  EXPECT_GT(held.use_count(), 1);
  session().answer(0, 200, "page");
  session().deliver();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(Download, RunsBesideOthersAndEndsInAnyOrder) {
  std::vector<std::string> ended;
  for (const std::string name : {"a", "b", "c"}) {
    std::make_shared<ZOVKPopupNetwork>(session())->startDownload(
        "https://pages.example/" + name,
        [&ended, name](bool, const std::optional<std::string>&) { ended.push_back(name); });
  }
  EXPECT_EQ(session().pendingCount(), 3U);
  session().answer("/c", 200, "c");
  session().fail("/a", "lost");
  session().answer("/b", 200, "b");
  session().deliver();
  EXPECT_THAT(ended, ElementsAre("c", "a", "b"));
}

}  // namespace
}  // namespace zovk
