#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

class Document : public ConfigFixture {
 protected:
  Document() {
    engine();
    log().clear();
  }
  bool parse(std::string_view text, std::uint64_t configType = kConfigRemote) {
    return engine().parseConfigFile(text, configType, &popups_);
  }
  /// The one popup of a document with this entry.
  const ZOVKPopupModel& popupOf(const std::string& entry) {
    EXPECT_TRUE(parse(documentOf({entry})));
    return *popups_.at(0);
  }
  PopupList popups_;
};

constexpr const char* kWholeEntry = R"({
  "pop_id":12,"scene":"lobby","scene_type":3,"valid_platform":"1,2","pop_type":2,
  "content_type":1,"uri":"https://pages.example/a","sig":"abc","pop_freq":3,"priority":-5,
  "publish_time":100,"check_url":"https://check.example","report_url":"https://report.example",
  "valid_time":1700000000,"expire_time":1800000000})";

TEST_F(Document, FillsEveryFieldOfARecord) {
  const ZOVKPopupModel& popup = popupOf(kWholeEntry);
  EXPECT_EQ(popup.pop_id, 12);
  EXPECT_EQ(popup.scene, "lobby");
  EXPECT_EQ(popup.scene_type, 3U);
  EXPECT_EQ(popup.valid_platform, "1,2");
  EXPECT_EQ(popup.pop_type, 2U);
  EXPECT_EQ(popup.content_type, 1U);
  EXPECT_EQ(popup.uri, "https://pages.example/a");
  EXPECT_EQ(popup.sig, "abc");
  EXPECT_EQ(popup.pop_freq, 3U);
  EXPECT_EQ(popup.priority, -5);
  EXPECT_EQ(popup.publish_time, 100);
  EXPECT_EQ(popup.check_url, "https://check.example");
  EXPECT_EQ(popup.report_url, "https://report.example");
  EXPECT_EQ(popup.valid_time, 1'700'000'000);
  EXPECT_EQ(popup.expire_time, 1'800'000'000);
  EXPECT_EQ(popup.config_type, kConfigRemote);
}

TEST_F(Document, MayBeginWithAByteOrderMark) {
  for (const std::uint64_t type : {kConfigRemote, kConfigLocal}) {
    EXPECT_TRUE(parse("\xEF\xBB\xBF" + documentOf({kWholeEntry}), type));
    EXPECT_EQ(popups_.at(0)->scene, "lobby");
  }
  EXPECT_FALSE(parse("\xEF\xBB\xBF"));
  EXPECT_FALSE(parse("\xEF\xBB\xBF\xEF\xBB\xBF" + documentOf({kWholeEntry})));
}

TEST_F(Document, MayLieFiveHundredAndTwelveLevelsDeep) {
  const auto withMessage = [](std::size_t depth) {
    return R"({"popups":[{"scene":"a"}],"message":)" + std::string(depth - 1, '[') +
           std::string(depth - 1, ']') + "}";
  };
  EXPECT_TRUE(parse(withMessage(512)));
  EXPECT_FALSE(parse(withMessage(513)));
}

TEST_F(Document, GivesZeroAndEmptyTextsForMissingKeysRatherThanTheRecordsDefaults) {
  const ZOVKPopupModel& popup = popupOf(R"({"unknown":1})");
  EXPECT_EQ(popup.pop_type, 0U);
  EXPECT_EQ(popup.content_type, 0U);
  EXPECT_EQ(popup.pop_freq, 0U);
  EXPECT_EQ(popup.pop_id, 0);
  EXPECT_EQ(popup.scene + popup.uri + popup.sig + popup.valid_platform, "");
  EXPECT_EQ(popup.check_url + popup.report_url, "");
}

TEST_F(Document, MarksItsRecordsWithItsType) {
  ASSERT_TRUE(parse(documentOf({kWholeEntry}), kConfigLocal));
  EXPECT_EQ(popups_.at(0)->config_type, kConfigLocal);
  ASSERT_TRUE(parse(documentOf({R"({"config_type":1,"scene":"a"})"}), kConfigRemote));
  EXPECT_EQ(popups_.at(0)->config_type, kConfigRemote) << "not read from the entry";
}

TEST_F(Document, KeepsTheOrderOfItsEntries) {
  ASSERT_TRUE(parse(documentOf({entryOf("b"), entryOf("a"), entryOf("b"), entryOf("")})));
  EXPECT_EQ(scenesOf(popups_), (std::vector<std::string>{"b", "a", "b", ""}));
}

TEST_F(Document, ReplacesTheListThatWasThere) {
  parse(documentOf({entryOf("a"), entryOf("b")}));
  parse(documentOf({entryOf("c")}));
  EXPECT_EQ(scenesOf(popups_), std::vector<std::string>{"c"});
}

TEST_F(Document, PassesOverEntriesThatAreNoObjectsOrEmpty) {
  ASSERT_TRUE(parse(R"({"popups":[1,{},null,"x",[{"scene":"a"}],{"scene":"b"}]})"));
  EXPECT_EQ(scenesOf(popups_), std::vector<std::string>{"b"});
}

TEST_F(Document, OfPassedOverEntriesOnlyIsAcceptedWithAnEmptyList) {
  popups_ = listOf({webPage("old")});
  EXPECT_TRUE(parse(R"({"popups":[1,{}]})"));
  EXPECT_TRUE(popups_.empty());
  EXPECT_EQ(lines().back(), "D parseConfigFile: Parse config file done");
}

TEST_F(Document, LogsItsWayThroughARemoteDocument) {
  const std::string text =
      R"({"code":0,"message":"100%s","server_time":5,"popups":[{"pop_id":1}]})";
  ASSERT_TRUE(parse(text));
  EXPECT_THAT(lines(), ElementsAre("D parseConfigFile: Parse config file, configType:0, file data "
                                   "length:" +
                                       std::to_string(text.size()),
                                   "D parseConfigFile: Config file:" + text,
                                   "D parseConfigFile: code:0, message:100%s",
                                   "D parseConfigFile: Parse config file done"));
}

TEST_F(Document, LogsItsWayThroughALocalDocument) {
  const std::string text = documentOf({R"({"pop_id":1})"});
  ASSERT_TRUE(parse(text, kConfigLocal));
  EXPECT_THAT(lines(), ElementsAre("D parseConfigFile: Parse config file, configType:1, file data "
                                   "length:" +
                                       std::to_string(text.size()),
                                   "D parseConfigFile: Config file:" + text,
                                   "D parseConfigFile: Parse config file done"));
}

TEST_F(Document, IsAcceptedWithoutALookAtItsEntriesWhenNobodyWantsThem) {
  EXPECT_TRUE(engine().parseConfigFile("{}", kConfigRemote, nullptr));
  EXPECT_TRUE(engine().parseConfigFile(R"({"popups":5})", kConfigRemote, nullptr));
  EXPECT_TRUE(engine().parseConfigFile("[]", kConfigLocal, nullptr));
  EXPECT_EQ(lines().back(), "D parseConfigFile: Parse config file done");
}

TEST_F(Document, FromTheServiceTellsTheServersTime) {
  parse(R"({"server_time":1700000000.5,"popups":[1]})");
  EXPECT_EQ(engine().serverTime(), 1700000000.5);
  parse(R"({"server_time":"1700000001.25","popups":[1]})");
  EXPECT_EQ(engine().serverTime(), 1700000001.25);
  parse(R"({"popups":[1]})");
  EXPECT_EQ(engine().serverTime(), 0.0) << "a missing key stores zero";
}

TEST_F(Document, FromTheServiceIsAcceptedWithoutACode) {
  EXPECT_TRUE(parse(documentOf({entryOf("a")})));
  EXPECT_TRUE(log().contains("code:0, message:(null)"));
}

TEST_F(Document, FromTheServiceIsAcceptedWithACodeThatIsZeroInAnyForm) {
  for (const char* code : {"0", "0.9", "-0.5", "false", R"("0")", R"("")", R"("abc")"}) {
    EXPECT_TRUE(parse(std::string(R"({"code":)") + code + R"(,"popups":[1]})")) << code;
  }
}

TEST_F(Document, OfTheGameDoesNotHaveItsHeadRead) {
  parse(R"({"server_time":5,"popups":[1]})");
  EXPECT_TRUE(parse(R"({"code":5,"message":"no","server_time":9,"popups":[1]})", kConfigLocal));
  EXPECT_TRUE(parse(R"({"code":null,"server_time":[],"popups":[1]})", kConfigLocal));
  EXPECT_EQ(engine().serverTime(), 5.0);
  EXPECT_FALSE(log().contains("code:5"));
}

TEST_F(Document, WithAKeyTwiceCountsTheLastOne) {
  EXPECT_EQ(popupOf(R"({"scene":"a","scene":"b"})").scene, "b");
}

TEST_F(Document, MayHoldTextsOfAnyKind) {
  const ZOVKPopupModel& popup =
      popupOf(R"({"scene":"100%s \"x\" 'y'\u4e2d\n","uri":"a\u0000b","sig":"../../x"})");
  EXPECT_EQ(popup.scene, "100%s \"x\" 'y'\xe4\xb8\xad\n");
  EXPECT_EQ(popup.uri, std::string("a\0b", 3));
  EXPECT_EQ(popup.sig, "../../x");
}

TEST_F(Document, TakesATextsKeyWithAnotherValueForAbsent) {
  for (const char* key : {"scene", "valid_platform", "uri", "sig", "check_url", "report_url"}) {
    for (const char* value : {"null", "5", "true", "[]", R"({"a":1})"}) {
      popups_.clear();
      const std::string entry = std::string(R"({"pop_id":7,")") + key + "\":" + value + "}";
      const ZOVKPopupModel& popup = popupOf(entry);
      EXPECT_EQ(popup.pop_id, 7);
      EXPECT_EQ(popup.scene + popup.valid_platform + popup.uri + popup.sig, "") << entry;
      EXPECT_EQ(popup.check_url + popup.report_url, "") << entry;
    }
  }
}

}  // namespace
}  // namespace zovk
