#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using Settings = StorageFixture;

TEST_F(Settings, GiveAnEmptyTextForAKeyNeverWritten) {
  EXPECT_EQ(fileManager().valueForKey("lobby"), "");
  EXPECT_THAT(lines(), ElementsAre("D valueForKey: Get value for key:lobby",
                                   "D valueForKey: No value for key:lobby"));
}

TEST_F(Settings, GiveWhatWasSaved) {
  fileManager().saveValue("100%s", "lobby");
  log().clear();
  EXPECT_EQ(fileManager().valueForKey("lobby"), "100%s");
  EXPECT_THAT(lines(), ElementsAre("D valueForKey: Get value for key:lobby",
                                   "D valueForKey: Got value:100%s for key:lobby"));
}

TEST_F(Settings, GiveAnEmptyTextForAnEmptyKey) {
  EXPECT_EQ(fileManager().valueForKey(""), "");
  EXPECT_THAT(lines(), ElementsAre("D valueForKey: Get value for key:"));
}

TEST_F(Settings, TakeAStoredEmptyTextForNone) {
  memory().settings.set("lobby", "");
  EXPECT_EQ(fileManager().valueForKey("lobby"), "");
  EXPECT_THAT(lines(), ElementsAre("D valueForKey: Get value for key:lobby",
                                   "D valueForKey: No value for key:lobby"));
}

TEST_F(Settings, AreOnDiskWhenSavingReturns) {
  fileManager().saveValue("1", "lobby");
  memory().settings.dropUnsaved();
  EXPECT_EQ(memory().settings.all(), (std::map<std::string, std::string>{{"lobby", "1"}}));
  EXPECT_THAT(lines(), ElementsAre("D saveValue: Save value:1 for key:lobby",
                                   "D saveValue: Save value:1 for key:lobby done"));
}

TEST_F(Settings, AreReplacedBySavingAgain) {
  fileManager().saveValue("1", "lobby");
  fileManager().saveValue("2", "lobby");
  EXPECT_EQ(fileManager().valueForKey("lobby"), "2");
}

TEST_F(Settings, AreRemovedOnDiskBySavingAnEmptyText) {
  fileManager().saveValue("1", "lobby");
  log().clear();
  fileManager().saveValue("", "lobby");
  EXPECT_THAT(lines(), ElementsAre("D saveValue: Save value: for key:lobby",
                                   "D saveValue: Remove value for key:lobby done"));
  memory().settings.dropUnsaved();
  EXPECT_EQ(fileManager().valueForKey("lobby"), "");
  EXPECT_TRUE(memory().settings.all().empty());
}

TEST_F(Settings, AreRemovedOnDiskBySavingNothing) {
  fileManager().saveValue("1", "lobby");
  log().clear();
  fileManager().saveValue(std::nullopt, "lobby");
  EXPECT_THAT(lines(), ElementsAre("D saveValue: Save value:(null) for key:lobby",
                                   "D saveValue: Remove value for key:lobby done"));
  memory().settings.dropUnsaved();
  EXPECT_TRUE(memory().settings.all().empty());
}

TEST_F(Settings, AreLeftAloneByAnEmptyKey) {
  fileManager().saveValue("1", "lobby");
  log().clear();
  const int synchronized = memory().settings.synchronizeCount();
  fileManager().saveValue("2", "");
  fileManager().saveValue("", "");
  fileManager().saveValue(std::nullopt, "");
  EXPECT_EQ(memory().settings.all(), (std::map<std::string, std::string>{{"lobby", "1"}}));
  EXPECT_EQ(memory().settings.synchronizeCount(), synchronized);
  EXPECT_THAT(lines(), ElementsAre("D saveValue: Save value:2 for key:", "E key illegal",
                                   "D saveValue: Save value: for key:", "E key illegal",
                                   "D saveValue: Save value:(null) for key:", "E key illegal"));
}

TEST_F(Settings, SurviveTheSweepOfTheCache) {
  fileManager().saveValue("1", "lobby");
  fileManager().deleteInternalFileWithout(std::nullopt);
  EXPECT_EQ(fileManager().valueForKey("lobby"), "1");
}

}  // namespace
}  // namespace zovk
