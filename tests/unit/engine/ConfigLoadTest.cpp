#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ConfigLoad : public ConfigFixture {
 protected:
  void saveRemote(const std::vector<std::string>& entries) {
    addCacheFile(kRemoteFile, documentOf(entries));
  }
  void shipLocal(const std::vector<std::string>& entries) {
    addResource(kLocalFile, documentOf(entries));
  }
};

TEST_F(ConfigLoad, RunsWhenTheEngineIsMade) {
  saveRemote({entryOf("a"), entryOf("b", 1)});
  shipLocal({entryOf("b", 2), entryOf("c")});
  EXPECT_THAT(scenesOf(engine().remotePopupArr()), ElementsAre("a", "b"));
  EXPECT_THAT(scenesOf(engine().localPopupArr()), ElementsAre("b", "c"));
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("a", "c", "b"));
  EXPECT_EQ(engine().mergePopupArr().back()->config_type, kConfigLocal);
}

TEST_F(ConfigLoad, ReadsRemoteThenLocalThenMerges) {
  engine();
  log().clear();
  engine().loadConfigFile();
  EXPECT_THAT(
      lines(),
      ElementsAre(
          "D loadConfigFile: Start load config file", "D loadRemoteConfig: Load remote config",
          "D readInternalFile: Read internal file:ZOVKPopupRemote.config",
          "E ZOVKPopupRemote.config not exist", "E Load remote config error, file may not exist",
          "D loadLocalConfig: Load local config",
          "D readResourceFile: Read resource file:ZOVKPopupLocal.config",
          "E ZOVKPopupLocal.config not exist", "E Load local config error, file may not exist",
          "D mergeConfig: Start merge config", "D mergeConfig: Merge config done, Popup count:0"));
}

TEST_F(ConfigLoad, LogsTheDocumentsItReads) {
  const std::string text = documentOf({entryOf("a")});
  addCacheFile(kRemoteFile, text);
  shipLocal({entryOf("a")});
  engine();
  log().clear();
  engine().loadConfigFile();
  const std::string size = std::to_string(text.size());
  EXPECT_THAT(
      lines(),
      ElementsAre(
          "D loadConfigFile: Start load config file", "D loadRemoteConfig: Load remote config",
          "D readInternalFile: Read internal file:ZOVKPopupRemote.config",
          "D readInternalFile: Read ZOVKPopupRemote.config success, data length:" + size,
          "D parseConfigFile: Parse config file, configType:0, file data length:" + size,
          "D parseConfigFile: Config file:" + text, "D parseConfigFile: code:0, message:(null)",
          "D parseConfigFile: Parse config file done", "D loadLocalConfig: Load local config",
          "D readResourceFile: Read resource file:ZOVKPopupLocal.config",
          "D readResourceFile: Read ZOVKPopupLocal.config success, data length:" + size,
          "D parseConfigFile: Parse config file, configType:1, file data length:" + size,
          "D parseConfigFile: Config file:" + text, "D parseConfigFile: Parse config file done",
          "D mergeConfig: Start merge config",
          "D mergeConfig: Same scene:a, use the one who's publishTime latest",
          "D mergeConfig: Remote config publishTime:0, Local config publishTime:0",
          "D mergeConfig: Merge config done, Popup count:1"));
}

TEST_F(ConfigLoad, OfTheLocalDocumentNeedsNoRemoteOne) {
  shipLocal({entryOf("a"), entryOf("b")});
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("a", "b"));
  EXPECT_THAT(engine().remotePopupArr(), IsEmpty());
  EXPECT_TRUE(log().contains("[Error] Load remote config error, file may not exist"));
}

TEST_F(ConfigLoad, OfTheRemoteDocumentNeedsNoLocalOne) {
  saveRemote({entryOf("a")});
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("a"));
  EXPECT_TRUE(log().contains("[Error] Load local config error, file may not exist"));
}

TEST_F(ConfigLoad, GoesOnWithoutAResourceBundle) {
  memory().bundles.removeResourceBundle();
  saveRemote({entryOf("a")});
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("a"));
  EXPECT_TRUE(log().contains("[Error] No resource bundle found!"));
  EXPECT_TRUE(log().contains("[Error] Load local config error, file may not exist"));
}

TEST_F(ConfigLoad, OfAnUnreadableFileKeepsTheListsThatWereThere) {
  saveRemote({entryOf("a")});
  shipLocal({entryOf("b")});
  engine();
  files().failReads(std::string(kCache) + "/" + kRemoteFile);
  files().failReads(std::string(kBundle) + "/" + kLocalFile);
  log().clear();
  engine().loadConfigFile();
  EXPECT_THAT(scenesOf(engine().remotePopupArr()), ElementsAre("a"));
  EXPECT_THAT(scenesOf(engine().localPopupArr()), ElementsAre("b"));
  EXPECT_EQ(log().count("[Error] Load remote config error, file may not exist"), 1U);
  EXPECT_EQ(log().count("[Error] Load local config error, file may not exist"), 1U);
  EXPECT_TRUE(log().contains("ZOVKPopupRemote.config file is empty"));
}

TEST_F(ConfigLoad, OfABrokenFileKeepsTheListsThatWereThere) {
  saveRemote({entryOf("a")});
  shipLocal({entryOf("b")});
  engine();
  for (const char* broken : {"{", "[]", R"({"popups":[]})", R"({"popups":[{"pop_id":null}]})"}) {
    addCacheFile(kRemoteFile, broken);
    addResource(kLocalFile, broken);
    log().clear();
    engine().loadConfigFile();
    EXPECT_THAT(scenesOf(engine().remotePopupArr()), ElementsAre("a")) << broken;
    EXPECT_THAT(scenesOf(engine().localPopupArr()), ElementsAre("b")) << broken;
    EXPECT_THAT(lines(), Contains("E Parse remote config failed").Times(1));
    EXPECT_THAT(lines(), Contains("E Parse local config failed").Times(1));
  }
}

TEST_F(ConfigLoad, OfAnEmptyFileFailsLikeAMissingOne) {
  addCacheFile(kRemoteFile, "");
  addResource(kLocalFile, "");
  EXPECT_THAT(engine().mergePopupArr(), IsEmpty());
  EXPECT_TRUE(log().contains("[Error] Load remote config error, file may not exist"));
  EXPECT_TRUE(log().contains("[Error] Load local config error, file may not exist"));
}

TEST_F(ConfigLoad, LooksAtTheSavedCodeAgain) {
  addCacheFile(kRemoteFile, R"({"code":5,"popups":[{"scene":"a"}]})");
  EXPECT_THAT(engine().remotePopupArr(), IsEmpty());
  EXPECT_TRUE(log().contains("[Error] Parse remote config failed"));
}

TEST_F(ConfigLoad, TakesTheServersTimeFromTheSavedDocument) {
  addCacheFile(kRemoteFile, R"({"server_time":5.5,"popups":[{"scene":"a"}]})");
  EXPECT_EQ(engine().serverTime(), 5.5);
}

TEST_F(ConfigLoad, EmptiesAListForADocumentOfPassedOverEntries) {
  saveRemote({entryOf("a")});
  engine();
  addCacheFile(kRemoteFile, R"({"popups":[{}]})");
  engine().loadRemoteConfig();
  EXPECT_THAT(engine().remotePopupArr(), IsEmpty());
}

TEST_F(ConfigLoad, ReplacesTheListsByThoseOfNewFiles) {
  saveRemote({entryOf("a"), entryOf("b")});
  engine();
  saveRemote({entryOf("c")});
  engine().loadConfigFile();
  EXPECT_THAT(scenesOf(engine().remotePopupArr()), ElementsAre("c"));
  EXPECT_THAT(scenesOf(engine().mergePopupArr()), ElementsAre("c"));
}

}  // namespace
}  // namespace zovk
