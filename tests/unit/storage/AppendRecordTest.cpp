#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using AppendRecord = StorageFixture;

TEST_F(AppendRecord, WritesTheFirstRecordWithoutASeparator) {
  EXPECT_TRUE(fileManager().saveInternalFile("once", "7", true));
  EXPECT_EQ(cacheText("once"), "7");
  EXPECT_THAT(
      lines(),
      ElementsAre("D saveInternalFile: Save internal file, fileName:once, data length:1, append:1",
                  "D saveInternalFile: File:once not exist, write directly",
                  "D saveInternalFile: Save once done, result:1"));
}

TEST_F(AppendRecord, PutsASeparatorBeforeEachFurtherRecord) {
  addCacheFile("once", "1");
  EXPECT_TRUE(fileManager().saveInternalFile("once", "2", true));
  EXPECT_EQ(cacheText("once"), "1,2");
  EXPECT_TRUE(fileManager().saveInternalFile("once", "3", true));
  EXPECT_EQ(cacheText("once"), "1,2,3");
}

TEST_F(AppendRecord, LogsEachStepOfAnAppend) {
  addCacheFile("once", "1");
  fileManager().saveInternalFile("once", "2%s", true);
  EXPECT_THAT(
      lines(),
      ElementsAre("D saveInternalFile: Save internal file, fileName:once, data length:3, append:1",
                  "D saveInternalFile: File:once exist, do append",
                  "D textExistInFile: Text exist in file, text:2%s filePath:" + cachePath("once"),
                  "D textExistInFile: Not exist",
                  "D saveInternalFile: Text:2%s not exist, do append",
                  "D saveInternalFile: Save once done, result:1"));
}

TEST_F(AppendRecord, WritesNothingWhenTheRecordIsPartOfWhatIsThere) {
  addCacheFile("once", "17");
  EXPECT_TRUE(fileManager().saveInternalFile("once", "7", true));
  EXPECT_EQ(cacheText("once"), "17");
  EXPECT_EQ(files().writeCount(cachePath("once")), 0);
  EXPECT_THAT(
      lines(),
      ElementsAre("D saveInternalFile: Save internal file, fileName:once, data length:1, append:1",
                  "D saveInternalFile: File:once exist, do append",
                  "D textExistInFile: Text exist in file, text:7 filePath:" + cachePath("once"),
                  "D textExistInFile: Exist", "D saveInternalFile: Text:7 is already exist",
                  "D saveInternalFile: Save once done, result:1"));
}

TEST_F(AppendRecord, SeparatesARecordFromAnEmptyFileToo) {
  addCacheFile("once", "");
  EXPECT_TRUE(fileManager().saveInternalFile("once", "7", true));
  EXPECT_EQ(cacheText("once"), ",7");
}

TEST_F(AppendRecord, AddsASeparatorForAnEmptyRecord) {
  addCacheFile("once", "1");
  EXPECT_TRUE(fileManager().saveInternalFile("once", "", true));
  EXPECT_EQ(cacheText("once"), "1,");
  EXPECT_TRUE(log().contains("[Error] Param illegal")) << "an empty text cannot be looked for";
}

TEST_F(AppendRecord, AddsBytesThatAreNoText) {
  addCacheFile("once", "1");
  EXPECT_TRUE(fileManager().saveInternalFile("once", "\xff", true));
  EXPECT_EQ(cacheText("once"), "1,\xff");
  EXPECT_THAT(
      lines(),
      ElementsAre(
          "D saveInternalFile: Save internal file, fileName:once, data length:1, append:1",
          "D saveInternalFile: File:once exist, do append",
          "D textExistInFile: Text exist in file, text:(null) filePath:" + cachePath("once"),
          "E Param illegal", "D saveInternalFile: Text:(null) not exist, do append",
          "D saveInternalFile: Save once done, result:1"));
}

TEST_F(AppendRecord, AddsToAFileThatIsNoText) {
  addCacheFile("once", "7\xff");
  EXPECT_TRUE(fileManager().saveInternalFile("once", "7", true));
  EXPECT_EQ(cacheText("once"), "7\xff,7");
}

TEST_F(AppendRecord, CountsAsDoneThoughTheDiskIsFull) {
  addCacheFile("once", "1");
  files().setFreeSpace(0);
  EXPECT_TRUE(fileManager().saveInternalFile("once", "2", true));
  EXPECT_EQ(cacheText("once"), "1");
  EXPECT_TRUE(log().contains("Save once done, result:1"));
}

TEST_F(AppendRecord, FailsWhenTheFirstRecordCannotBeWritten) {
  files().setFreeSpace(0);
  EXPECT_FALSE(fileManager().saveInternalFile("once", "1", true));
  EXPECT_EQ(cacheText("once"), std::nullopt);
  EXPECT_TRUE(log().contains("Save once done, result:0"));
}

TEST_F(AppendRecord, SeesARecordThatWasAddedAMomentAgo) {
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(fileManager().saveInternalFile("once", "same", true));
    EXPECT_TRUE(fileManager().saveInternalFile("once", "other", true));
  }
  EXPECT_EQ(cacheText("once"), "same,other");
}

}  // namespace
}  // namespace zovk
