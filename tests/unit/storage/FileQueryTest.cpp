#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using FileExists = StorageFixture;
using TextInFile = StorageFixture;

TEST_F(FileExists, ForFilesAndDirectories) {
  addCacheFile("a.html", "");
  EXPECT_TRUE(fileManager().fileExistAtPath(cachePath("a.html")));
  EXPECT_TRUE(fileManager().fileExistAtPath(kCache));
  EXPECT_FALSE(fileManager().fileExistAtPath(cachePath("b.html")));
  EXPECT_THAT(lines(), ElementsAre("D fileExistAtPath: File exist at path:" + cachePath("a.html"),
                                   "D fileExistAtPath: File exist at path:" + std::string(kCache),
                                   "D fileExistAtPath: File exist at path:" + cachePath("b.html")));
}

TEST_F(FileExists, NotForAnEmptyPath) {
  EXPECT_FALSE(fileManager().fileExistAtPath(""));
  EXPECT_THAT(lines(), ElementsAre("D fileExistAtPath: File exist at path:", "E path illegal"));
}

TEST_F(TextInFile, IsFoundAnywhere) {
  addCacheFile("once", "abc,123");
  const std::string path = cachePath("once");
  for (const char* text : {"abc,123", "abc", "123", "12", ",", "c,1"}) {
    EXPECT_TRUE(fileManager().textExistInFile(text, path)) << text;
  }
  log().clear();
  fileManager().textExistInFile("12", path);
  EXPECT_THAT(lines(),
              ElementsAre("D textExistInFile: Text exist in file, text:12 filePath:" + path,
                          "D textExistInFile: Exist"));
}

TEST_F(TextInFile, IsComparedByCase) {
  addCacheFile("once", "abc");
  EXPECT_FALSE(fileManager().textExistInFile("ABC", cachePath("once")));
  EXPECT_THAT(lines(), ElementsAre("D textExistInFile: Text exist in file, text:ABC filePath:" +
                                       cachePath("once"),
                                   "D textExistInFile: Not exist"));
}

TEST_F(TextInFile, NeedsATextAndAPath) {
  addCacheFile("once", "abc");
  EXPECT_FALSE(fileManager().textExistInFile("", cachePath("once")));
  EXPECT_FALSE(fileManager().textExistInFile(std::nullopt, cachePath("once")));
  EXPECT_FALSE(fileManager().textExistInFile("abc", ""));
  EXPECT_THAT(
      lines(),
      ElementsAre(
          "D textExistInFile: Text exist in file, text: filePath:" + cachePath("once"),
          "E Param illegal",
          "D textExistInFile: Text exist in file, text:(null) filePath:" + cachePath("once"),
          "E Param illegal",
          "D textExistInFile: Text exist in file, text:abc filePath:", "E Param illegal"));
}

TEST_F(TextInFile, IsNotFoundInAMissingFile) {
  EXPECT_FALSE(fileManager().textExistInFile("abc", cachePath("once")));
  EXPECT_THAT(lines(), ElementsAre("D textExistInFile: Text exist in file, text:abc filePath:" +
                                       cachePath("once"),
                                   "D textExistInFile: Not exist"));
}

TEST_F(TextInFile, IsNotFoundInWhatIsNoText) {
  addCacheFile("once", "abc\xff");
  EXPECT_FALSE(fileManager().textExistInFile("abc", cachePath("once")));
  EXPECT_FALSE(fileManager().textExistInFile("abc", kCache)) << "a directory";
}

TEST_F(TextInFile, IsFoundBehindAZeroByte) {
  addCacheFile("once", std::string("a\0b,c", 5));
  EXPECT_TRUE(fileManager().textExistInFile("b,c", cachePath("once")));
}

TEST_F(TextInFile, IsNotFoundInAFileThatVanishes) {
  addCacheFile("once", "abc");
  files().vanishAfter(cachePath("once"), 1);
  EXPECT_FALSE(fileManager().textExistInFile("abc", cachePath("once")));
}

}  // namespace
}  // namespace zovk
