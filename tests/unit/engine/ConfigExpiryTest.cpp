#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class ConfigExpiry : public ConfigFixture {
 protected:
  static ZOVKPopupModel pageWith(const std::string& sig, std::uint64_t contentType = 1) {
    ZOVKPopupModel popup;
    popup.content_type = contentType;
    popup.sig = sig;
    return popup;
  }
};

TEST_F(ConfigExpiry, RemovesPagesThatNoSavedPopupNeedsWhenTheEngineIsMade) {
  addCacheFile(kRemoteFile, documentOf({R"({"content_type":1,"pop_type":1,"sig":"live"})",
                                        R"({"content_type":2,"pop_type":1,"sig":"live"})",
                                        R"({"content_type":3,"pop_type":1,"sig":"web"})"}));
  for (const char* name : {"ZOVKPopup_0_1_1_live.html", "ZOVKPopup_0_1_2_live.html",
                           "ZOVKPopup_0_1_1_dead.html", "ZOVKPopup_0_1_3_web.html", "other.txt"}) {
    addCacheFile(name, "page");
  }
  addCacheFile(kOnceRecordFile, "live,");
  engine();
  EXPECT_THAT(files().list(kCache),
              UnorderedElementsAre(kRemoteFile, kOnceRecordFile, "ZOVKPopup_0_1_1_live.html",
                                   "ZOVKPopup_0_1_2_live.html"));
}

TEST_F(ConfigExpiry, RemovesEveryPageWithoutASavedDocument) {
  addCacheFile("ZOVKPopup_0_1_1_a.html", "page");
  addCacheFile(kOnceRecordFile, "x");
  engine();
  EXPECT_THAT(files().list(kCache), ElementsAre(kOnceRecordFile));
  EXPECT_TRUE(log().contains(
      "Delete internal file without:ZOVKPopupRemote.config,ZOVKPopupFrequencyOnce.config"));
}

TEST_F(ConfigExpiry, RemovesPagesOfLocalPopupsFromTheCache) {
  addResource(kLocalFile, documentOf({R"({"content_type":1,"sig":"local"})"}));
  addCacheFile("ZOVKPopup_0_0_1_local.html", "page");
  engine();
  EXPECT_TRUE(files().list(kCache).empty());
}

TEST_F(ConfigExpiry, RunsOnceAndNotWithALaterAnswer) {
  engine().startPopup("https://service.example", "1001", "secret");
  addCacheFile("ZOVKPopup_0_1_1_old.html", "page");
  addCacheFile(kOnceRecordFile, "old,");
  memory().urlSession.answer("get_info", 200, documentOf({entryOf("new")}));
  settle();
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("new"));
  EXPECT_EQ(cacheText("ZOVKPopup_0_1_1_old.html"), "page");
  EXPECT_EQ(cacheText(kOnceRecordFile), "old,");
}

TEST_F(ConfigExpiry, LogsItsSteps) {
  engine();
  engine().setRemotePopupArr(listOf({pageWith("a%s"), pageWith("web", 3), pageWith("b", 2)}));
  log().clear();
  engine().deleteExpiredPopup();
  EXPECT_THAT(lines(),
              ElementsAre("D deleteExpiredPopup: Delete expired Popup",
                          "D deleteExpirePopupFile: Delete expire Popup file",
                          "D deleteInternalFileWithout: Delete internal file without:"
                          "ZOVKPopup_0_1_1_a%s.html,ZOVKPopup_0_1_2_b.html,"
                          "ZOVKPopupRemote.config,ZOVKPopupFrequencyOnce.config",
                          "D deleteInternalFileWithout: Delete internal file done",
                          "D deleteExpirePopupOnceRecord: Delete expire Popup once record",
                          "D readInternalFile: Read internal file:ZOVKPopupFrequencyOnce.config",
                          "E ZOVKPopupFrequencyOnce.config not exist"));
}

TEST_F(ConfigExpiry, LogsThatItRewritesTheOnceRecord) {
  engine().setLocalPopupArr(listOf({pageWith("ab", 3)}));
  addCacheFile(kOnceRecordFile, "ab,cd");
  log().clear();
  engine().deleteExpirePopupOnceRecord({});
  EXPECT_EQ(cacheText(kOnceRecordFile), "ab,");
  EXPECT_THAT(
      lines(),
      ElementsAre("D deleteExpirePopupOnceRecord: Delete expire Popup once record",
                  "D readInternalFile: Read internal file:ZOVKPopupFrequencyOnce.config",
                  "D readInternalFile: Read ZOVKPopupFrequencyOnce.config success, data length:5",
                  "D saveInternalFile: Save internal file, "
                  "fileName:ZOVKPopupFrequencyOnce.config, data length:3, append:0",
                  "D saveInternalFile: ZOVKPopupFrequencyOnce.config exist, delete the old one",
                  "D saveInternalFile: Start save ZOVKPopupFrequencyOnce.config",
                  "D saveInternalFile: Save ZOVKPopupFrequencyOnce.config done, result:1"));
}

TEST_F(ConfigExpiry, DropsTheRecordsOfRemoteWebPagesAndKeepsThoseOfAllLocalPopups) {
  addCacheFile(kRemoteFile, documentOf({R"({"content_type":3,"sig":"remoteWeb"})",
                                        R"({"content_type":1,"sig":"remotePage"})",
                                        R"({"content_type":2,"sig":"remotePage2"})"}));
  addResource(kLocalFile, documentOf({R"({"content_type":3,"sig":"localWeb"})",
                                      R"({"content_type":1,"sig":"localPage"})"}));
  addCacheFile(kOnceRecordFile, "gone,remoteWeb,remotePage,localWeb,localPage,remotePage2,x");
  engine();
  EXPECT_EQ(cacheText(kOnceRecordFile), "remotePage,localWeb,localPage,remotePage2,");
}

TEST_F(ConfigExpiry, WritesAnEmptyRecordWhenNoneIsLeft) {
  addCacheFile(kOnceRecordFile, "gone");
  engine();
  EXPECT_EQ(cacheText(kOnceRecordFile), "");
}

TEST_F(ConfigExpiry, WritesNoRecordWhereThereIsNone) {
  engine();
  EXPECT_EQ(cacheText(kOnceRecordFile), std::nullopt);
  addCacheFile(kOnceRecordFile, "");
  engine().deleteExpiredPopup();
  EXPECT_EQ(cacheText(kOnceRecordFile), "");
  EXPECT_EQ(files().writeCount(std::string(kCache) + "/" + kOnceRecordFile), 0);
}

TEST_F(ConfigExpiry, LeavesARecordThatIsNoText) {
  addCacheFile(kOnceRecordFile, "gone,\xff");
  engine();
  EXPECT_EQ(cacheText(kOnceRecordFile), "gone,\xff");
}

TEST_F(ConfigExpiry, LeavesARecordThatCannotBeRead) {
  addCacheFile(kOnceRecordFile, "gone");
  files().failReads(std::string(kCache) + "/" + kOnceRecordFile);
  engine();
  EXPECT_EQ(cacheText(kOnceRecordFile), "gone");
}

TEST_F(ConfigExpiry, KeepsTheOldRecordWhenTheNewOneCannotBeWritten) {
  addCacheFile(kOnceRecordFile, "gone");
  files().failWrites(std::string(kCache) + "/" + kOnceRecordFile);
  engine();
  EXPECT_EQ(cacheText(kOnceRecordFile), "gone");
}

using ConfigClock = ConfigFixture;

TEST_F(ConfigClock, IsTheDevicesOwnWithItsFraction) {
  memory().scheduler.setTime(1'712'345'678.25);
  EXPECT_EQ(engine().getCurrentTime(), 1'712'345'678.25);
}

TEST_F(ConfigClock, IsNotMovedByTheServersTime) {
  engine().parseConfigFile(R"({"server_time":5})", kConfigRemote, nullptr);
  EXPECT_EQ(engine().serverTime(), 5.0);
  EXPECT_EQ(engine().getCurrentTime(), MemoryScheduler::kStartOfTime);
  memory().scheduler.setTime(10);
  EXPECT_EQ(engine().getCurrentTime(), 10.0);
}

}  // namespace
}  // namespace zovk
