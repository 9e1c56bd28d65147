#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

constexpr std::size_t kMostBytes = 8U * 1024 * 1024;
constexpr std::size_t kMostEntries = 10'000;

// What a document may cost is bounded, whatever it holds.
class DocumentSize : public ConfigFixture {
 protected:
  DocumentSize() { engine(); }
  bool parse(const std::string& text) {
    log().clear();
    return engine().parseConfigFile(text, kConfigRemote, &popups_);
  }
  /// A document of one popup that is as long as this.
  static std::string documentOfLength(std::size_t bytes) {
    const std::string begin = R"({"popups":[{"scene":"lobby"}],"x":")";
    const std::string end = R"("})";
    return begin + std::string(bytes - begin.size() - end.size(), 'x') + end;
  }
  static std::string documentOfEntries(std::size_t count) {
    return documentOf(std::vector<std::string>(count, R"({"publish_time":7})"));
  }
  /// The member's value once more, for as long as a document may be.
  static std::string documentOfRubbish(const std::string& value) {
    std::string text = R"({"popups":[{"scene":"lobby"}],"x":[0)";
    while (text.size() + value.size() + 3 < kMostBytes) text.append(",").append(value);
    return text + "]}";
  }

  PopupList popups_;
};

TEST_F(DocumentSize, MayBeEightMegabytesAndNoByteMore) {
  EXPECT_TRUE(parse(documentOfLength(kMostBytes)));
  EXPECT_EQ(scenesOf(popups_), std::vector<std::string>{"lobby"});
  popups_.clear();
  EXPECT_FALSE(parse(documentOfLength(kMostBytes + 1)));
  EXPECT_TRUE(popups_.empty());
  EXPECT_EQ(log().count("[Error]"), 1U);
  EXPECT_TRUE(log().contains("[Error] Parse config file error:more than 8 MiB"));
}

TEST_F(DocumentSize, MayBeTenThousandEntriesAndNotOneMore) {
  EXPECT_TRUE(parse(documentOfEntries(kMostEntries)));
  EXPECT_EQ(popups_.size(), kMostEntries);
  EXPECT_EQ(popups_.back()->publish_time, 7);
  popups_.clear();
  EXPECT_FALSE(parse(documentOfEntries(kMostEntries + 1)));
  EXPECT_TRUE(popups_.empty());
  EXPECT_EQ(log().count("[Error]"), 1U);
  EXPECT_TRUE(log().contains("[Error] Parse config file exception:more than 10000 popups"));
}

TEST_F(DocumentSize, CountsEntriesThatArePassedOver) {
  const std::vector<std::string> empty(kMostEntries + 1, "{}");
  EXPECT_FALSE(parse(documentOf(empty)));
  const std::vector<std::string> numbers(kMostEntries + 1, "1");
  EXPECT_FALSE(parse(documentOf(numbers)));
}

TEST_F(DocumentSize, TakesWhatNobodyReadsWhateverItIs) {
  for (const char* rubbish : {R"({"popups":[{"scene":"a"}],"code":5})", "[[[]]]", "1.5", "null",
                              R"("\n")", R"({"scene":null})"}) {
    EXPECT_TRUE(parse(documentOfRubbish(rubbish))) << rubbish;
    EXPECT_EQ(scenesOf(popups_), std::vector<std::string>{"lobby"}) << rubbish;
  }
}

TEST_F(DocumentSize, RefusedLeavesTheOldDocumentAndItsPopups) {
  addCacheFile(kRemoteFile, documentOf({entryOf("old")}));
  engine().loadConfigFile();
  for (const std::string& text :
       {documentOfLength(kMostBytes + 1), documentOfEntries(kMostEntries + 1)}) {
    log().clear();
    engine().handleRemoteConfigResponse(text);
    EXPECT_EQ(cacheText(kRemoteFile), documentOf({entryOf("old")}));
    EXPECT_EQ(scenesOf(engine().remotePopupArr()), std::vector<std::string>{"old"});
    EXPECT_TRUE(log().contains("[Error] No remote config or parse config file error"));
  }
}

TEST_F(DocumentSize, OfASavedFileIsBoundedToo) {
  addCacheFile(kRemoteFile, documentOfEntries(kMostEntries + 1));
  engine().loadRemoteConfig();
  EXPECT_TRUE(engine().remotePopupArr().empty());
  EXPECT_TRUE(log().contains("[Error] Parse remote config failed"));
}

using DocumentKeys = DocumentSize;

TEST_F(DocumentKeys, GivenTwiceCountTheLastTime) {
  EXPECT_TRUE(parse(R"({"code":5,"popups":[{"scene":"a"},{"pop_id":null}],"code":0,)"
                    R"("popups":[{"pop_id":null,"scene":"b","scene":"c","pop_id":7}]})"));
  ASSERT_EQ(scenesOf(popups_), std::vector<std::string>{"c"});
  EXPECT_EQ(popups_[0]->pop_id, 7);
  EXPECT_FALSE(parse(R"({"popups":[{"scene":"a"}],"popups":5})"));
}

TEST_F(DocumentKeys, CountOnlyInTheirPlace) {
  EXPECT_TRUE(parse(R"({"x":{"popups":[{"scene":"x"}],"code":5},"popups":[)"
                    R"({"scene":"a","x":{"scene":"x","pop_id":null},"uri":{"scene":"x"}},)"
                    R"([{"scene":"x"}],{"publish_time":2,"sig":["x"]}],"y":[{"scene":"x"}]})"));
  ASSERT_EQ(scenesOf(popups_), (std::vector<std::string>{"a", ""}));
  EXPECT_EQ(popups_[0]->uri, "");
  EXPECT_EQ(popups_[0]->publish_time, 0) << "nothing is taken over from another entry";
  EXPECT_EQ(popups_[1]->publish_time, 2);
}

TEST_F(DocumentKeys, AndTextsMayBeCutAnywhereByTheReader) {
  const std::string longText(200'000, 'l');
  EXPECT_TRUE(parse(R"({"x":")" + longText + R"(","popups":[{"\u0073cene":"a\tb)" + longText +
                    R"(","pop\u005fid":1234567}]})"));
  ASSERT_EQ(popups_.size(), 1U);
  EXPECT_EQ(popups_[0]->scene, "a\tb" + longText);
  EXPECT_EQ(popups_[0]->pop_id, 1234567);
}

}  // namespace
}  // namespace zovk
