#include "unit/logging/LoggerFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using DebugSwitch = LoggerFixture;

TEST_F(DebugSwitch, IsTurnedOnByTheInfoDictionaryOfAHostWithoutASettingBundle) {
  setInfo({{"ZOVK_DEBUG", true}});
  writeDebugLine();
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead, kFound, kDebugLine, kDebugLine));
  EXPECT_TRUE(ZPLogger::isEnableDebug());
}

TEST_F(DebugSwitch, StaysOffWithoutAnySetting) {
  writeDebugLine();
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead));
  EXPECT_FALSE(ZPLogger::isEnableDebug());
}

TEST_F(DebugSwitch, StaysOffWhenTheInfoDictionarySaysFalse) {
  setInfo({{"ZOVK_DEBUG", false}});
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead));
}

TEST_F(DebugSwitch, StaysOffWhenTheInfoDictionaryIsBroken) {
  memory().files.addFile("/app/Info.json", "{\"ZOVK_DEBUG\":tru");
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead));
}

TEST_F(DebugSwitch, OfASettingBundleWithoutAFileStaysOffWhateverTheInfoDictionarySays) {
  setInfo({{"ZOVK_DEBUG", true}});
  addSettingBundle();
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead));
}

TEST_F(DebugSwitch, OfAnUnreadableSettingFileStaysOffWhateverTheInfoDictionarySays) {
  setInfo({{"ZOVK_DEBUG", true}});
  addSettingFile("ZOVK_DEBUG=1");
  memory().files.failReads(kSettingFile);
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead));
}

TEST_F(DebugSwitch, OfASettingFileThatIsNoTextStaysOff) {
  setInfo({{"ZOVK_DEBUG", true}});
  addSettingFile("ZOVK_DEBUG=1\n\xff\xfe");
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead));
}

TEST_F(DebugSwitch, TakesTheInfoDictionaryWhenWhatIsNamedLikeTheSettingBundleIsNoBundle) {
  setInfo({{"ZOVK_DEBUG", true}});
  memory().files.addFile(kSettingBundle, "no directory");
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead, kFound, kDebugLine));
}

TEST_F(DebugSwitch, TakesTheSettingBundleBeforeTheInfoDictionary) {
  setInfo({{"ZOVK_DEBUG", true}});
  addSettingFile("ZOVK_DEBUG=0");
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead, kFound));
}

TEST_F(DebugSwitch, OnceOffStaysOffWhenTheSettingChanges) {
  writeDebugLine();
  setInfo({{"ZOVK_DEBUG", true}});
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead));
}

TEST_F(DebugSwitch, OnceOnStaysOnWhenTheSettingChanges) {
  setInfo({{"ZOVK_DEBUG", true}});
  writeDebugLine();
  setInfo({{"ZOVK_DEBUG", false}});
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre(kRead, kFound, kDebugLine, kDebugLine));
}

TEST_F(DebugSwitch, IsNeverTurnedOffByReadingTheSettingAgain) {
  setInfo({{"ZOVK_DEBUG", true}});
  ZPLogger::getSetting();
  setInfo({{"ZOVK_DEBUG", false}});
  ZPLogger::getSetting();
  EXPECT_TRUE(ZPLogger::isEnableDebug());
  EXPECT_THAT(lines(), ElementsAre(kRead, kFound, kRead));
}

TEST_F(DebugSwitch, IsOffBeforeTheFirstDebugLine) {
  setInfo({{"ZOVK_DEBUG", true}});
  EXPECT_FALSE(ZPLogger::isEnableDebug());
  EXPECT_TRUE(lines().empty());
}

TEST(DebugSwitchWithoutAHost, StaysOffAndNothingBreaks) {
  ZPLogger::setEnvironment({});
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "hello");
  logError("nobody hears this");
  EXPECT_FALSE(ZPLogger::isEnableDebug());
}

}  // namespace
}  // namespace zovk
