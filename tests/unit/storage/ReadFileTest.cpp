#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

class ReadFile : public StorageFixture {
 protected:
  // The out-parameters are taken for untouched when they still hold this.
  std::string path_ = "untouched";
  std::string data_ = "untouched";

  void expectUntouched() const {
    EXPECT_EQ(path_, "untouched");
    EXPECT_EQ(data_, "untouched");
  }
};

TEST_F(ReadFile, GivesPathAndBytesOfAnInternalFile) {
  const std::string bytes("a\0b\xff", 4);
  addCacheFile("a.html", bytes);
  EXPECT_TRUE(fileManager().readInternalFile("a.html", &path_, &data_));
  EXPECT_EQ(path_, cachePath("a.html"));
  EXPECT_EQ(data_, bytes);
  EXPECT_THAT(lines(), ElementsAre("D readInternalFile: Read internal file:a.html",
                                   "D readInternalFile: Read a.html success, data length:4"));
}

TEST_F(ReadFile, GivesPathAndBytesOfAResource) {
  addResource("a.html", "page");
  EXPECT_TRUE(fileManager().readResourceFile("a.html", &path_, &data_));
  EXPECT_EQ(path_, std::string(kBundle) + "/a.html");
  EXPECT_EQ(data_, "page");
  EXPECT_THAT(lines(), ElementsAre("D readResourceFile: Read resource file:a.html",
                                   "D readResourceFile: Read a.html success, data length:4"));
}

TEST_F(ReadFile, GivesOnlyWhatTheCallerWants) {
  addCacheFile("a.html", "page");
  EXPECT_TRUE(fileManager().readInternalFile("a.html", nullptr, nullptr));
  EXPECT_TRUE(fileManager().readInternalFile("a.html", &path_, nullptr));
  EXPECT_EQ(path_, cachePath("a.html"));
  EXPECT_TRUE(fileManager().readInternalFile("a.html", nullptr, &data_));
  EXPECT_EQ(data_, "page");
}

TEST_F(ReadFile, RejectsAnEmptyName) {
  EXPECT_FALSE(fileManager().readInternalFile("", &path_, &data_));
  EXPECT_FALSE(fileManager().readResourceFile("", &path_, &data_));
  expectUntouched();
  EXPECT_THAT(lines(),
              ElementsAre("D readInternalFile: Read internal file:", "E Param fileName illegal",
                          "D readResourceFile: Read resource file:", "E Param fileName illegal"));
}

TEST_F(ReadFile, FailsForAMissingFile) {
  EXPECT_FALSE(fileManager().readInternalFile("a.html", &path_, &data_));
  EXPECT_FALSE(fileManager().readResourceFile("b.html", &path_, &data_));
  expectUntouched();
  EXPECT_THAT(lines(),
              ElementsAre("D readInternalFile: Read internal file:a.html", "E a.html not exist",
                          "D readResourceFile: Read resource file:b.html", "E b.html not exist"));
}

TEST_F(ReadFile, FailsForAResourceWithoutABundle) {
  memory().bundles.removeResourceBundle();
  EXPECT_FALSE(fileManager().readResourceFile("a.html", &path_, &data_));
  expectUntouched();
  EXPECT_THAT(lines(), ElementsAre("D readResourceFile: Read resource file:a.html",
                                   "E No resource bundle found!", "E a.html not exist"));
}

TEST_F(ReadFile, FailsForAnEmptyFile) {
  addCacheFile("a.html", "");
  addResource("b.html", "");
  EXPECT_FALSE(fileManager().readInternalFile("a.html", &path_, &data_));
  EXPECT_FALSE(fileManager().readResourceFile("b.html", &path_, &data_));
  expectUntouched();
  EXPECT_THAT(lines(), ElementsAre("D readInternalFile: Read internal file:a.html",
                                   "D readInternalFile: a.html file is empty",
                                   "D readResourceFile: Read resource file:b.html",
                                   "D readResourceFile: b.html file is empty"));
}

TEST_F(ReadFile, FailsForAnUnreadableFile) {
  addCacheFile("a.html", "page");
  files().failReads(cachePath("a.html"));
  EXPECT_FALSE(fileManager().readInternalFile("a.html", &path_, &data_));
  expectUntouched();
  EXPECT_THAT(lines(), ElementsAre("D readInternalFile: Read internal file:a.html",
                                   "D readInternalFile: a.html file is empty"));
}

TEST_F(ReadFile, FailsForAFileThatVanishesWhileItIsLookedAt) {
  addCacheFile("a.html", "page");
  files().vanishAfter(cachePath("a.html"), 1);
  EXPECT_FALSE(fileManager().readInternalFile("a.html", &path_, &data_));
  expectUntouched();
  EXPECT_THAT(lines(), ElementsAre("D readInternalFile: Read internal file:a.html",
                                   "D readInternalFile: a.html file is empty"));
}

TEST_F(ReadFile, FailsForADirectory) {
  files().addDirectory(cachePath("sub"));
  EXPECT_FALSE(fileManager().readInternalFile("sub", &path_, &data_));
  expectUntouched();
  EXPECT_THAT(lines(), ElementsAre("D readInternalFile: Read internal file:sub",
                                   "D readInternalFile: sub file is empty"));
}

TEST_F(ReadFile, TakesNamesWithSignsOfTheLogFormat) {
  const std::string name = "100%s %@ \"it's\".html";
  addCacheFile(name, "page");
  EXPECT_TRUE(fileManager().readInternalFile(name, nullptr, &data_));
  EXPECT_EQ(data_, "page");
  EXPECT_THAT(lines(), ElementsAre("D readInternalFile: Read internal file:" + name,
                                   "D readInternalFile: Read " + name + " success, data length:4"));
}

TEST_F(ReadFile, FindsNothingUnderANameWithAZeroByte) {
  addCacheFile("a.html", "page");
  EXPECT_FALSE(fileManager().readInternalFile(std::string("a.html\0.x", 9), &path_, &data_));
  expectUntouched();
}

TEST_F(ReadFile, ReadsALargeFileWhole) {
  const std::string page(50'000'000, 'x');
  addCacheFile("a.html", page);
  EXPECT_TRUE(fileManager().readInternalFile("a.html", nullptr, &data_));
  EXPECT_EQ(data_, page);
  EXPECT_TRUE(log().contains("data length:50000000"));
}

}  // namespace
}  // namespace zovk
