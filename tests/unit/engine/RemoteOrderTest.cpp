#include "fixtures/LineWatch.h"
#include "fixtures/LogMessages.h"
#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

// A good answer of the service: what is done first, and what later.
class RemoteOrder : public ConfigFixture {
 protected:
  struct Moment {
    std::vector<std::string> remote;
    std::vector<std::string> merged;
    bool saved = false;
    std::size_t downloads = 0;
    friend bool operator==(const Moment&, const Moment&) = default;
    friend void PrintTo(const Moment& moment, std::ostream* out) {
      *out << ::testing::PrintToString(moment.remote) << ::testing::PrintToString(moment.merged)
           << (moment.saved ? " saved, " : " not saved, ") << moment.downloads << " downloads";
    }
  };

  RemoteOrder() {
    addCacheFile(kRemoteFile, documentOf({entryOf("old")}));
    engine();
    log().clear();
  }
  /// Returns the state when this line is written for an answer with one page to download.
  Moment momentOf(const std::string& line) {
    std::optional<Moment> seen;
    {
      const LineWatch watch(memory(), line, [&] {
        if (!seen) seen = now();
      });
      engine().handleRemoteConfigResponse(kAnswer);
    }
    EXPECT_TRUE(seen.has_value()) << line;
    return seen.value_or(Moment());
  }
  Moment now() {
    return {scenesOf(engine().remotePopupArr()), scenesOf(engine().mergePopupArr()),
            cacheText(kRemoteFile) == kAnswer,
            memory().urlSession.requestsTo("files.example").size()};
  }
  static inline const std::string kAnswer = documentOf(
      {R"({"scene":"new","content_type":1,"uri":"https://files.example/new","sig":"abc"})"});
};

TEST_F(RemoteOrder, NothingIsDoneBeforeTheDocumentIsFoundGood) {
  EXPECT_EQ(momentOf("Parse config file success"), (Moment{{"old"}, {"old"}, false, 0}));
}

TEST_F(RemoteOrder, TheFileIsSavedBeforeAnyListChanges) {
  EXPECT_EQ(momentOf("Save ZOVKPopupRemote.config done"), (Moment{{"old"}, {"old"}, true, 0}));
}

TEST_F(RemoteOrder, TheRemotePopupsAreReplacedBeforeTheyAreMerged) {
  EXPECT_EQ(momentOf("Start merge config"), (Moment{{"new"}, {"old"}, true, 0}));
}

TEST_F(RemoteOrder, TheListsAreMergedBeforePagesAreDownloaded) {
  EXPECT_EQ(momentOf("Start to download remote Popup file"), (Moment{{"new"}, {"new"}, true, 0}));
  EXPECT_EQ(now(), (Moment{{"new"}, {"new"}, true, 1}));
}

TEST_F(RemoteOrder, EveryStepIsLogged) {
  engine().startPopup("https://service.example", "1001", "secret");
  memory().scheduler.advance(std::chrono::milliseconds(250));
  log().clear();
  memory().urlSession.answer("get_info", 200, kAnswer);
  settle();
  const std::string size = std::to_string(kAnswer.size());
  EXPECT_THAT(
      debugMessages(log()),
      ElementsAre("Request remote config success", "Request time:0.250000",
                  "Handle remote config response:" + size,
                  "Parse config file, configType:0, file data length:" + size,
                  "Config file:" + kAnswer, "code:0, message:(null)", "Parse config file done",
                  "Parse config file success", "Save remote config file", "Start merge config",
                  "Merge config done, Popup count:1", "Start to download remote Popup file"));
}

TEST_F(RemoteOrder, OnlyThePagesOfTheAnswerAreDownloaded) {
  ZOVKPopupModel local = pageFile("local");
  local.uri = "https://files.example/local";
  local.config_type = kConfigLocal;
  engine().setLocalPopupArr(listOf({local}));
  engine().handleRemoteConfigResponse(kAnswer);
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("new", "local"));
  ASSERT_EQ(memory().urlSession.requestCount(), 1U);
  EXPECT_EQ(memory().urlSession.request(0).url, "https://files.example/new");
}

TEST_F(RemoteOrder, TheTimeOfTheRequestIsKnownBeforeTheAnswerIsHandled) {
  engine().startPopup("https://service.example", "1001", "secret");
  memory().scheduler.advance(std::chrono::milliseconds(250));
  double time = 0;
  const LineWatch handled(memory(), "Handle remote config response",
                          [&] { time = engine().requestTime(); });
  memory().urlSession.answer("get_info", 200, kAnswer);
  settle();
  EXPECT_DOUBLE_EQ(time, 0.25);
}

}  // namespace
}  // namespace zovk
