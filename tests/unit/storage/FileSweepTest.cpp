#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using FileSweep = StorageFixture;

TEST_F(FileSweep, KeepsWhatTheListNames) {
  for (const char* name :
       {"a.html", "b.html", "ZOVKPopupRemote.config", "ZOVKPopupFrequencyOnce.config"}) {
    addCacheFile(name, "x");
  }
  fileManager().deleteInternalFileWithout(
      "a.html,ZOVKPopupRemote.config,ZOVKPopupFrequencyOnce.config");
  EXPECT_THAT(files().list(kCache),
              ElementsAre("ZOVKPopupFrequencyOnce.config", "ZOVKPopupRemote.config", "a.html"));
  EXPECT_THAT(lines(), ElementsAre("D deleteInternalFileWithout: Delete internal file without:"
                                   "a.html,ZOVKPopupRemote.config,ZOVKPopupFrequencyOnce.config",
                                   "D deleteInternalFileWithout: Delete file:b.html",
                                   "D deleteInternalFileWithout: Delete file:b.html result:1",
                                   "D deleteInternalFileWithout: Delete internal file done"));
}

TEST_F(FileSweep, KeepsAFileWhoseNameIsPartOfAKeptOne) {
  addCacheFile("a.html", "x");
  addCacheFile("ZOVKPopup_1_2_3_a.html", "x");
  addCacheFile("A.html", "x");
  fileManager().deleteInternalFileWithout("ZOVKPopup_1_2_3_a.html,");
  EXPECT_THAT(files().list(kCache), ElementsAre("ZOVKPopup_1_2_3_a.html", "a.html"));
}

TEST_F(FileSweep, DeletesEverythingWithoutAList) {
  addCacheFile("a.html", "x");
  addCacheFile("sub/b.html", "x");
  fileManager().deleteInternalFileWithout(std::nullopt);
  EXPECT_TRUE(files().list(kCache).empty());
  EXPECT_TRUE(files().isDirectory(kCache));
  EXPECT_EQ(lines().front(), "D deleteInternalFileWithout: Delete internal file without:(null)");
}

TEST_F(FileSweep, DeletesEverythingWithAnEmptyList) {
  addCacheFile("a.html", "x");
  fileManager().deleteInternalFileWithout("");
  EXPECT_TRUE(files().list(kCache).empty());
}

TEST_F(FileSweep, RemovesDirectoriesWithWhatTheyHold) {
  addCacheFile("sub/a.html", "x");
  addCacheFile("sub/b.html", "x");
  fileManager().deleteInternalFileWithout("sub/b.html");
  EXPECT_THAT(files().list(kCache), ElementsAre("sub", "sub/b.html"));
  log().clear();
  fileManager().deleteInternalFileWithout("none");
  EXPECT_TRUE(files().list(kCache).empty());
  EXPECT_THAT(lines(), ElementsAre("D deleteInternalFileWithout: Delete internal file without:none",
                                   "D deleteInternalFileWithout: Delete file:sub",
                                   "D deleteInternalFileWithout: Delete file:sub result:1",
                                   "D deleteInternalFileWithout: Delete file:sub/b.html",
                                   "D deleteInternalFileWithout: Delete file:sub/b.html result:0",
                                   "D deleteInternalFileWithout: Delete internal file done"));
}

TEST_F(FileSweep, RemovesADirectoryThoughTheListNamesAFileOfTheSameNameElsewhere) {
  addCacheFile("sub/a.html", "x");
  fileManager().deleteInternalFileWithout("a.html");
  EXPECT_TRUE(files().list(kCache).empty()) << "only relative paths count";
}

TEST_F(FileSweep, OnlyLogsWhatCannotBeRemoved) {
  addCacheFile("a.html", "x");
  addCacheFile("b.html", "x");
  files().failRemovals(cachePath("a.html"));
  fileManager().deleteInternalFileWithout("none");
  EXPECT_THAT(files().list(kCache), ElementsAre("a.html"));
  EXPECT_THAT(lines(), ElementsAre("D deleteInternalFileWithout: Delete internal file without:none",
                                   "D deleteInternalFileWithout: Delete file:a.html",
                                   "D deleteInternalFileWithout: Delete file:a.html result:0",
                                   "D deleteInternalFileWithout: Delete file:b.html",
                                   "D deleteInternalFileWithout: Delete file:b.html result:1",
                                   "D deleteInternalFileWithout: Delete internal file done"));
}

TEST_F(FileSweep, DoesNothingWithoutADirectory) {
  files().take(kCache);
  fileManager().deleteInternalFileWithout("a.html");
  EXPECT_THAT(lines(),
              ElementsAre("D deleteInternalFileWithout: Delete internal file without:a.html",
                          "D deleteInternalFileWithout: Delete internal file done"));
}

TEST_F(FileSweep, DeletesNothingBehindALinkInPlaceOfTheDirectory) {
  files().take(kCache);
  files().addFile("/home/player/Documents/letter", "x");
  files().addLink(kCache, "/home/player/Documents");
  fileManager().deleteInternalFileWithout("none");
  EXPECT_EQ(files().text("/home/player/Documents/letter"), "x");
  EXPECT_THAT(lines(), ElementsAre("D deleteInternalFileWithout: Delete internal file without:none",
                                   "D deleteInternalFileWithout: Delete internal file done"));
}

TEST_F(FileSweep, DoesNothingInADirectoryThatCannotBeListed) {
  addCacheFile("a.html", "x");
  files().failReads(kCache);
  fileManager().deleteInternalFileWithout("none");
  EXPECT_THAT(files().list(kCache), ElementsAre("a.html"));
  EXPECT_THAT(lines(), ElementsAre("D deleteInternalFileWithout: Delete internal file without:none",
                                   "D deleteInternalFileWithout: Delete internal file done"));
}

TEST_F(FileSweep, TakesNamesWithSignsOfTheLogFormat) {
  const std::string name = "100%s %@ \"it's\".html";
  addCacheFile(name, "x");
  fileManager().deleteInternalFileWithout("50%d");
  EXPECT_TRUE(files().list(kCache).empty());
  EXPECT_THAT(lines(), ElementsAre("D deleteInternalFileWithout: Delete internal file without:50%d",
                                   "D deleteInternalFileWithout: Delete file:" + name,
                                   "D deleteInternalFileWithout: Delete file:" + name + " result:1",
                                   "D deleteInternalFileWithout: Delete internal file done"));
}

}  // namespace
}  // namespace zovk
