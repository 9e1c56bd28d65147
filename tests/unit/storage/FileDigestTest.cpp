#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using FileDigest = StorageFixture;

TEST_F(FileDigest, AgreesWithWhatOthersCompute) {
  addCacheFile("empty", "");
  addCacheFile("abc", "abc");
  addCacheFile("256", std::string(256, 'a'));
  addCacheFile("257", std::string(257, 'a'));
  EXPECT_EQ(fileManager().getFileMD5(cachePath("empty")), "d41d8cd98f00b204e9800998ecf8427e");
  EXPECT_EQ(fileManager().getFileMD5(cachePath("abc")), "900150983cd24fb0d6963f7d28e17f72");
  EXPECT_EQ(fileManager().getFileMD5(cachePath("256")), "81109eec5aa1a284fb5327b10e9c16b9");
  EXPECT_EQ(fileManager().getFileMD5(cachePath("257")), "b7958df91b9413477491e9b6e27f1bac");
}

TEST_F(FileDigest, LogsTheFileAndTheResult) {
  addCacheFile("abc", "abc");
  fileManager().getFileMD5(cachePath("abc"));
  EXPECT_THAT(lines(), ElementsAre("D getFileMD5: Get file MD5, filePath:" + cachePath("abc"),
                                   "D getFileMD5: MD5:900150983cd24fb0d6963f7d28e17f72"));
}

TEST_F(FileDigest, OfAnEmptyPathIsEmpty) {
  EXPECT_EQ(fileManager().getFileMD5(""), "");
  EXPECT_THAT(lines(), ElementsAre("D getFileMD5: Get file MD5, filePath:", "E filePath illegal"));
}

TEST_F(FileDigest, OfAMissingFileIsEmpty) {
  EXPECT_EQ(fileManager().getFileMD5(cachePath("abc")), "");
  EXPECT_THAT(lines(), ElementsAre("D getFileMD5: Get file MD5, filePath:" + cachePath("abc"),
                                   "E File not exist, filePaht:" + cachePath("abc")));
}

TEST_F(FileDigest, OfAnUnreadableFileIsEmpty) {
  addCacheFile("abc", "abc");
  files().failReads(cachePath("abc"));
  EXPECT_EQ(fileManager().getFileMD5(cachePath("abc")), "");
  EXPECT_TRUE(log().contains("[Error] File not exist, filePaht:" + cachePath("abc")));
}

TEST_F(FileDigest, OfADirectoryIsEmpty) {
  EXPECT_EQ(fileManager().getFileMD5(kCache), "");
}

TEST_F(FileDigest, OfAFileThatVanishesIsEmpty) {
  addCacheFile("abc", "abc");
  files().vanishAfter(cachePath("abc"), 1);
  EXPECT_EQ(fileManager().getFileMD5(cachePath("abc")), "");
}

TEST_F(FileDigest, OfALargeFileIsComputedPieceByPiece) {
  const std::string page(50'000'000, 'x');
  addCacheFile("page", page);
  EXPECT_EQ(fileManager().getFileMD5(cachePath("page")), md5Hex(page));
  files().cutReads(cachePath("page"), 10'000'000);  // of reads by the piece only
  EXPECT_EQ(fileManager().getFileMD5(cachePath("page")), md5Hex(page.substr(0, 10'000'000)));
}

TEST_F(FileDigest, OfAFileThatStaysTheSameIsReadOnce) {
  addCacheFile("abc", "abc");
  memory().scheduler.skip(std::chrono::seconds(1));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(fileManager().getFileMD5(cachePath("abc")), "900150983cd24fb0d6963f7d28e17f72");
  }
  EXPECT_EQ(files().readCount(cachePath("abc")), 1);
}

TEST_F(FileDigest, FollowsEveryChangeOfTheFile) {
  for (int i = 0; i < 5; ++i) {
    const std::string text = "page " + std::to_string(i);
    ASSERT_TRUE(fileManager().saveInternalFile("page", text, false));
    memory().scheduler.skip(std::chrono::seconds(1));
    EXPECT_EQ(fileManager().getFileMD5(cachePath("page")), md5Hex(text));
    EXPECT_EQ(fileManager().getFileMD5(cachePath("page")), md5Hex(text));
  }
  files().take(cachePath("page"));
  EXPECT_EQ(fileManager().getFileMD5(cachePath("page")), "");
}

}  // namespace
}  // namespace zovk
