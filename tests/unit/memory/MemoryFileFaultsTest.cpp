#include <string>

#include <gtest/gtest.h>

#include "platform/memory/MemoryFileSystem.h"

namespace zovk {
namespace {

class MemoryFileFaults : public testing::Test {
 protected:
  MemoryFileFaults() {
    files.addFile("/home/a", "old");
    files.addFile("/other/a", "old");
  }
  MemoryFileSystem files;
};

TEST_F(MemoryFileFaults, FailsWritesBelowAPrefixAndLeavesTheOldFile) {
  files.failWrites("/home/", std::errc::permission_denied);
  EXPECT_EQ(files.writeAtomically("/home/a", "new"), std::errc::permission_denied);
  EXPECT_EQ(files.append("/home/a", "new"), std::errc::permission_denied);
  EXPECT_FALSE(files.writeAtomically("/other/a", "new"));
  EXPECT_EQ(files.text("/home/a"), "old");
  EXPECT_EQ(files.writeCount("/home/a"), 0);
  files.clearFaults();
  EXPECT_FALSE(files.writeAtomically("/home/a", "new"));
}

TEST_F(MemoryFileFaults, FailsReadsOfAFileThatIsThere) {
  files.failReads("/home/a");
  EXPECT_TRUE(files.exists("/home/a"));
  EXPECT_FALSE(files.read("/home/a"));
  EXPECT_FALSE(files.readPieces("/home/a", [](std::string_view) { FAIL(); }));
  EXPECT_TRUE(files.read("/other/a"));
}

TEST_F(MemoryFileFaults, EndsAFileEarly) {
  files.cutReads("/home/a", 2);
  std::string read;
  EXPECT_TRUE(files.readPieces("/home/a", [&](std::string_view piece) { read += piece; }));
  EXPECT_EQ(read, "ol");
}

TEST_F(MemoryFileFaults, FailsRemovals) {
  files.failRemovals("/home/a");
  EXPECT_EQ(files.remove("/home/a"), std::errc::io_error);
  EXPECT_TRUE(files.exists("/home/a"));
}

TEST_F(MemoryFileFaults, FailsTheMakingOfDirectories) {
  files.failCreateDirectory("/home/x", std::errc::read_only_file_system);
  EXPECT_EQ(files.createDirectory("/home/x"), std::errc::read_only_file_system);
  EXPECT_FALSE(files.createDirectory("/home/y"));
}

TEST_F(MemoryFileFaults, ChangesNoEntryOfAReadOnlyDirectory) {
  files.makeReadOnly("/home");
  EXPECT_EQ(files.writeAtomically("/home/a", "new"), std::errc::permission_denied);
  EXPECT_EQ(files.createDirectory("/home/x"), std::errc::permission_denied);
  EXPECT_EQ(files.remove("/home/a"), std::errc::permission_denied);
  EXPECT_FALSE(files.append("/home/a", "+"));
  EXPECT_EQ(files.text("/home/a"), "old+");
}

TEST_F(MemoryFileFaults, RunsOutOfSpace) {
  files.setFreeSpace(4);
  EXPECT_EQ(files.writeAtomically("/home/a", "12345"), std::errc::no_space_on_device);
  EXPECT_EQ(files.text("/home/a"), "old");
  EXPECT_FALSE(files.writeAtomically("/home/b", "1234"));
  EXPECT_EQ(files.writeAtomically("/home/a", "x"), std::errc::no_space_on_device);
  EXPECT_FALSE(files.remove("/home/b"));
  EXPECT_FALSE(files.writeAtomically("/home/a", "1234"));  // gives back the three of "old"
  EXPECT_FALSE(files.writeAtomically("/home/c", "123"));
}

TEST_F(MemoryFileFaults, AppendsWhatFits) {
  files.setFreeSpace(2);
  EXPECT_EQ(files.append("/home/a", "123"), std::errc::no_space_on_device);
  EXPECT_EQ(files.text("/home/a"), "old12");
}

TEST_F(MemoryFileFaults, LetsAFileVanishBetweenTwoLooks) {
  files.vanishAfter("/home/a", 2);
  EXPECT_TRUE(files.exists("/home/a"));
  EXPECT_TRUE(files.identity("/home/a"));
  EXPECT_FALSE(files.exists("/home/a"));
  EXPECT_FALSE(files.read("/home/a"));
}

}  // namespace
}  // namespace zovk
