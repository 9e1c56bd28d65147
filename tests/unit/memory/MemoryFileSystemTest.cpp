#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/MemoryFileSystem.h"

namespace zovk {
namespace {

using Paths = std::vector<std::string>;

class MemoryFiles : public testing::Test {
 protected:
  MemoryFiles() { files.addDirectory("/home"); }
  MemoryFileSystem files;
};

TEST_F(MemoryFiles, ReadsBackWhatWasWritten) {
  const std::string bytes("a\0b", 3);
  EXPECT_FALSE(files.writeAtomically("/home/a", bytes));
  EXPECT_TRUE(files.exists("/home/a"));
  EXPECT_EQ(files.read("/home/a"), bytes);
  EXPECT_FALSE(files.writeAtomically("/home/a", ""));
  EXPECT_EQ(files.read("/home/a"), "");
}

TEST_F(MemoryFiles, HasNothingAtPathsThatCannotExist) {
  for (const std::string& path :
       {std::string(), std::string("home"), std::string("/home\0x", 7),
        std::string("/home/missing/.."), std::string("/home/") + std::string(256, 'n')}) {
    EXPECT_FALSE(files.exists(path)) << path;
    EXPECT_FALSE(files.identity(path)) << path;
    EXPECT_FALSE(files.read(path)) << path;
    EXPECT_FALSE(files.listRecursively(path)) << path;
    EXPECT_TRUE(files.writeAtomically(path, "x")) << path;
    EXPECT_TRUE(files.append(path, "x")) << path;
    EXPECT_TRUE(files.remove(path)) << path;
  }
}

TEST_F(MemoryFiles, NamesOnePlaceByManyPaths) {
  files.addFile("/home/a/b", "text");
  for (const char* path : {"//home/a/b", "/home/./a//b", "/home/a/../a/b", "/../home/a/b"}) {
    EXPECT_EQ(files.read(path), "text") << path;
  }
  EXPECT_TRUE(files.exists("/home/a/"));
  EXPECT_TRUE(files.exists("/"));
  EXPECT_FALSE(files.exists("/home/a/b/"));
  EXPECT_FALSE(files.exists("/home/a/b/.."));
}

TEST_F(MemoryFiles, MakesADirectoryOnlyWhereOneIsAbove) {
  EXPECT_EQ(files.createDirectory("/home/x/y"), std::errc::no_such_file_or_directory);
  EXPECT_FALSE(files.createDirectory("/home/x"));
  EXPECT_FALSE(files.createDirectory("/home/x/y/"));
  EXPECT_EQ(files.createDirectory("/home/x"), std::errc::file_exists);
  EXPECT_TRUE(files.isDirectory("/home/x/y"));
  EXPECT_FALSE(files.read("/home/x"));
}

TEST_F(MemoryFiles, WritesOnlyWhereADirectoryIsAbove) {
  files.addFile("/home/file", "");
  EXPECT_EQ(files.writeAtomically("/home/x/y", "z"), std::errc::no_such_file_or_directory);
  EXPECT_EQ(files.writeAtomically("/home/file/y", "z"), std::errc::not_a_directory);
  EXPECT_EQ(files.writeAtomically("/home", "z"), std::errc::is_a_directory);
}

TEST_F(MemoryFiles, RemovesADirectoryWithAllItHoldsAndNothingBeside) {
  files.addFile("/home/a/b/c", "1");
  files.addFile("/home/a.txt", "2");
  files.addFile("/home/ab", "3");
  EXPECT_FALSE(files.remove("/home/a"));
  EXPECT_EQ(files.list("/home"), (Paths{"a.txt", "ab"}));
  EXPECT_EQ(files.remove("/home/a"), std::errc::no_such_file_or_directory);
}

TEST_F(MemoryFiles, ListsADirectoryBeforeItsEntries) {
  files.addFile("/home/b/z", "");
  files.addFile("/home/b.txt", "");
  files.addFile("/home/a", "");
  files.addDirectory("/home/b/empty");
  EXPECT_EQ(files.listRecursively("/home/"), (Paths{"a", "b", "b.txt", "b/empty", "b/z"}));
  EXPECT_EQ(files.listRecursively("/home/b/empty"), Paths{});
  EXPECT_FALSE(files.listRecursively("/home/a"));
}

TEST_F(MemoryFiles, AppendsToFilesThatExist) {
  EXPECT_EQ(files.append("/home/a", "x"), std::errc::no_such_file_or_directory);
  files.addFile("/home/a", "1");
  EXPECT_FALSE(files.append("/home/a", ",2"));
  EXPECT_EQ(files.read("/home/a"), "1,2");
  EXPECT_EQ(files.append("/home", "x"), std::errc::is_a_directory);
}

TEST_F(MemoryFiles, ReadsPieceByPiece) {
  const std::string text(10'000, 'x');
  files.addFile("/home/a", text);
  std::string read;
  int pieces = 0;
  EXPECT_TRUE(files.readPieces("/home/a", [&](std::string_view piece) {
    read += piece;
    ++pieces;
  }));
  EXPECT_EQ(read, text);
  EXPECT_GT(pieces, 1);
  EXPECT_FALSE(files.readPieces("/home/missing", [](std::string_view) { FAIL(); }));
  EXPECT_FALSE(files.readPieces("/home", [](std::string_view) { FAIL(); }));
}

TEST_F(MemoryFiles, ChangesTheIdentityWheneverTheContentIsWritten) {
  files.addFile("/home/a", "1");
  const auto first = files.identity("/home/a");
  ASSERT_TRUE(first);
  EXPECT_EQ(files.identity("/home/a"), first);
  ASSERT_FALSE(files.writeAtomically("/home/a", "1"));
  const auto second = files.identity("/home/a");
  EXPECT_NE(second, first);
  EXPECT_NE(second->inode, first->inode);
  ASSERT_FALSE(files.append("/home/a", "2"));
  const auto third = files.identity("/home/a");
  EXPECT_EQ(third->inode, second->inode);
  EXPECT_EQ(third->size, 2u);
  EXPECT_GT(third->modifiedNanoseconds, second->modifiedNanoseconds);
}

TEST_F(MemoryFiles, FollowsLinksExceptWhenListingAndRemoving) {
  files.addFile("/home/real/file", "text");
  files.addLink("/home/link", "real");
  files.addLink("/home/real/self", "file");
  EXPECT_EQ(files.read("/home/link/file"), "text");
  EXPECT_EQ(files.read("/home/link/self"), "text");
  EXPECT_EQ(files.identity("/home/link/self"), files.identity("/home/real/file"));
  EXPECT_EQ(files.listRecursively("/home"), (Paths{"link", "real", "real/file", "real/self"}));
  EXPECT_FALSE(files.remove("/home/link"));
  EXPECT_TRUE(files.exists("/home/real/file"));
}

TEST_F(MemoryFiles, FindsNothingBehindALinkThatLeadsNowhere) {
  files.addLink("/home/dangling", "missing");
  files.addLink("/home/loop", "/home/loop");
  EXPECT_FALSE(files.exists("/home/dangling"));
  EXPECT_FALSE(files.exists("/home/loop"));
  EXPECT_FALSE(files.read("/home/loop/x"));
}

TEST_F(MemoryFiles, CountsReadsAndWrites) {
  ASSERT_FALSE(files.writeAtomically("/home/a", "1"));
  ASSERT_FALSE(files.append("/home/a", "2"));
  ASSERT_TRUE(files.read("/home/a"));
  EXPECT_TRUE(files.text("/home/a"));  // a test's own look is not counted
  EXPECT_EQ(files.writeCount("/home/a"), 2);
  EXPECT_EQ(files.readCount("/home/a"), 1);
  EXPECT_EQ(files.readCount("/home/b"), 0);
}

}  // namespace
}  // namespace zovk
