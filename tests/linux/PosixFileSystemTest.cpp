#include <csignal>
#include <filesystem>

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "ScratchDirectory.h"
#include "platform/linux/system/PosixFileSystem.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::Optional;

mode_t modeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0);
  return status.st_mode & 07777U;
}

class PosixFileSystemTest : public testing::Test {
 protected:
  ScratchDirectory scratch;
  PosixFileSystem files;
};

TEST_F(PosixFileSystemTest, WhatItMakesIsTheUsersAlone) {
  ASSERT_FALSE(files.createDirectory(scratch / "directory"));
  ASSERT_FALSE(files.writeAtomically(scratch / "file", "text"));
  EXPECT_EQ(modeOf(scratch / "directory"), 0700U);
  EXPECT_EQ(modeOf(scratch / "file"), 0600U);
}

TEST_F(PosixFileSystemTest, TheMaskOfTheProcessDoesNotMatter) {
  for (const mode_t mask : {mode_t{0}, mode_t{0777}}) {
    const std::string number = std::to_string(mask);
    const mode_t before = ::umask(mask);
    EXPECT_FALSE(files.createDirectory(scratch / ("directory" + number)));
    EXPECT_FALSE(files.writeAtomically(scratch / ("file" + number), "text"));
    ::umask(before);
    EXPECT_EQ(modeOf(scratch / ("directory" + number)), 0700U);
    EXPECT_EQ(modeOf(scratch / ("file" + number)), 0600U);
  }
}

TEST_F(PosixFileSystemTest, APipeInAFilesPlaceIsNeitherReadNorWaitedFor) {
  const std::string pipe = scratch / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(files.read(pipe));
  EXPECT_FALSE(files.readPieces(pipe, [](std::string_view) {}));
  EXPECT_TRUE(files.append(pipe, "text"));
  EXPECT_TRUE(files.exists(pipe));
  EXPECT_FALSE(files.writeAtomically(pipe, "text"));
  EXPECT_THAT(files.read(pipe), Optional(std::string("text")));
}

TEST_F(PosixFileSystemTest, ADeviceIsNoFile) {
  EXPECT_FALSE(files.read("/dev/zero"));
  EXPECT_TRUE(files.append("/dev/null", "text"));
}

TEST_F(PosixFileSystemTest, AWriteThatFailsHalfwayLeavesTheOldFileAndNothingElse) {
  ASSERT_FALSE(files.writeAtomically(scratch / "file", "old"));
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  rlimit small = before;
  small.rlim_cur = 1000;
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::error_code error = files.writeAtomically(scratch / "file", std::string(5000, 'x'));
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  EXPECT_EQ(error, std::errc::file_too_large);
  EXPECT_THAT(files.read(scratch / "file"), Optional(std::string("old")));
  EXPECT_THAT(files.listRecursively(scratch.path()), Optional(ElementsAre("file")));
}

TEST_F(PosixFileSystemTest, AMoveThatFailsLeavesNothingBehind) {
  ASSERT_FALSE(files.createDirectory(scratch / "directory"));
  EXPECT_TRUE(files.writeAtomically(scratch / "directory", "text"));
  EXPECT_THAT(files.listRecursively(scratch.path()), Optional(ElementsAre("directory")));
}

TEST_F(PosixFileSystemTest, WhatACrashedWriteLeftIsListedAndCanBeRemoved) {
  const std::string leftover = ".zovkpopup-write-a1B2c3";
  ASSERT_FALSE(files.writeAtomically(scratch / leftover, "half"));
  EXPECT_THAT(files.listRecursively(scratch.path()), Optional(ElementsAre(leftover)));
  EXPECT_FALSE(files.remove(scratch / leftover));
}

TEST_F(PosixFileSystemTest, AFileThatEveryoneMayReadBecomesPrivateWhenReplaced) {
  ASSERT_FALSE(files.writeAtomically(scratch / "file", "text"));
  std::filesystem::permissions(scratch / "file", std::filesystem::perms(0644));
  ASSERT_FALSE(files.writeAtomically(scratch / "file", "text"));
  EXPECT_EQ(modeOf(scratch / "file"), 0600U);
}

TEST_F(PosixFileSystemTest, NamesThatAreNoUtf8AreListedAsTheyAre) {
  ASSERT_FALSE(files.writeAtomically(scratch / "a\xff", "text"));
  EXPECT_THAT(files.listRecursively(scratch.path()), Optional(ElementsAre("a\xff")));
}

TEST_F(PosixFileSystemTest, ALinkThatLeadsBackUpDoesNotTrapTheListing) {
  std::filesystem::create_directory_symlink(scratch.path(), scratch / "up");
  EXPECT_THAT(files.listRecursively(scratch.path()), Optional(ElementsAre("up")));
}

}  // namespace
}  // namespace zovk
