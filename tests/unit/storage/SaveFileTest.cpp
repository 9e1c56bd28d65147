#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using SaveFile = StorageFixture;

TEST_F(SaveFile, WritesANewFile) {
  EXPECT_TRUE(fileManager().saveInternalFile("a.html", "page", false));
  EXPECT_EQ(cacheText("a.html"), "page");
  EXPECT_THAT(lines(),
              ElementsAre("D saveInternalFile: Save internal file, fileName:a.html, data length:4, "
                          "append:0",
                          "D saveInternalFile: Start save a.html",
                          "D saveInternalFile: Save a.html done, result:1"));
}

TEST_F(SaveFile, ReplacesALongerFile) {
  addCacheFile("a.html", "a much longer page");
  EXPECT_TRUE(fileManager().saveInternalFile("a.html", "new", false));
  EXPECT_EQ(cacheText("a.html"), "new");
  EXPECT_THAT(lines(),
              ElementsAre("D saveInternalFile: Save internal file, fileName:a.html, data length:3, "
                          "append:0",
                          "D saveInternalFile: a.html exist, delete the old one",
                          "D saveInternalFile: Start save a.html",
                          "D saveInternalFile: Save a.html done, result:1"));
}

TEST_F(SaveFile, WritesEmptyAndBinaryData) {
  EXPECT_TRUE(fileManager().saveInternalFile("empty", "", false));
  EXPECT_EQ(cacheText("empty"), "");
  const std::string bytes("\0\xff,%s", 5);
  EXPECT_TRUE(fileManager().saveInternalFile("bytes", bytes, false));
  EXPECT_EQ(cacheText("bytes"), bytes);
}

TEST_F(SaveFile, RejectsAnEmptyNameAndAbsentData) {
  EXPECT_FALSE(fileManager().saveInternalFile("", "page", false));
  EXPECT_FALSE(fileManager().saveInternalFile("", "page", true));
  EXPECT_FALSE(fileManager().saveInternalFile("a.html", std::nullopt, false));
  EXPECT_TRUE(files().list(kCache).empty());
  EXPECT_THAT(
      lines(),
      ElementsAre(
          "D saveInternalFile: Save internal file, fileName:, data length:4, append:0",
          "E Param illegal",
          "D saveInternalFile: Save internal file, fileName:, data length:4, append:1",
          "E Param illegal",
          "D saveInternalFile: Save internal file, fileName:a.html, data length:0, append:0",
          "E Param illegal"));
}

TEST_F(SaveFile, FailsWhenNothingCanBeWritten) {
  files().failWrites(kCache);
  EXPECT_FALSE(fileManager().saveInternalFile("a.html", "page", false));
  EXPECT_EQ(cacheText("a.html"), std::nullopt);
  EXPECT_THAT(lines(),
              ElementsAre("D saveInternalFile: Save internal file, fileName:a.html, data length:4, "
                          "append:0",
                          "D saveInternalFile: Start save a.html",
                          "D saveInternalFile: Save a.html done, result:0"));
}

TEST_F(SaveFile, FailsInAReadOnlyDirectory) {
  files().makeReadOnly(kCache);
  EXPECT_FALSE(fileManager().saveInternalFile("a.html", "page", false));
  EXPECT_FALSE(fileManager().saveInternalFile("a.html", "page", true));
  EXPECT_TRUE(files().list(kCache).empty());
}

TEST_F(SaveFile, KeepsTheOldFileWhenTheDiskIsFull) {
  addCacheFile("a.html", "old");
  files().setFreeSpace(2);
  EXPECT_FALSE(fileManager().saveInternalFile("a.html", "newer", false));
  EXPECT_EQ(cacheText("a.html"), "old");
  EXPECT_THAT(lines(),
              ElementsAre("D saveInternalFile: Save internal file, fileName:a.html, data length:5, "
                          "append:0",
                          "D saveInternalFile: a.html exist, delete the old one",
                          "D saveInternalFile: Start save a.html",
                          "D saveInternalFile: Save a.html done, result:0"));
}

TEST_F(SaveFile, ReplacesADirectoryWithAllItHolds) {
  addCacheFile("a.html/inner", "x");
  EXPECT_TRUE(fileManager().saveInternalFile("a.html", "page", false));
  EXPECT_EQ(cacheText("a.html"), "page");
}

TEST_F(SaveFile, GoesOnWhenWhatIsInItsPlaceCannotBeRemoved) {
  files().addDirectory(cachePath("a%s.html"));
  files().failRemovals(kCache, std::errc::permission_denied);
  EXPECT_FALSE(fileManager().saveInternalFile("a%s.html", "page", false));
  EXPECT_THAT(lines(),
              ElementsAre("D saveInternalFile: Save internal file, fileName:a%s.html, data "
                          "length:4, append:0",
                          "D saveInternalFile: a%s.html exist, delete the old one",
                          "E Delete old a%s.html failed, error:Permission denied",
                          "D saveInternalFile: Start save a%s.html",
                          "D saveInternalFile: Save a%s.html done, result:0"));
}

TEST_F(SaveFile, WritesALargeFileWhole) {
  const std::string page(50'000'000, 'x');
  EXPECT_TRUE(fileManager().saveInternalFile("a.html", page, false));
  EXPECT_EQ(cacheText("a.html"), page);
  EXPECT_TRUE(log().contains("data length:50000000"));
}

}  // namespace
}  // namespace zovk
