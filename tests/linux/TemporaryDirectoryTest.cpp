#include <csignal>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "ScopedVariable.h"
#include "ScratchDirectory.h"
#include "platform/linux/system/TemporaryDirectory.h"

namespace zovk {
namespace {

namespace fs = std::filesystem;

class TemporaryDirectoryTest : public testing::Test {
 protected:
  /// A process that downloads something and is killed.
  static void leaveOneBehind() {
    const pid_t game = ::fork();
    if (game == 0) {
      TemporaryDirectory temporary;
      std::string path;
      const UniqueFd file = temporary.makeFile(path);
      ::raise(file ? SIGKILL : SIGTERM);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(game, &status, 0), game);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
  }
  std::size_t entries() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(scratch_.path()), fs::directory_iterator()));
  }

  ScratchDirectory scratch_;
  ScopedVariable place_{"TMPDIR", scratch_.path()};
  TemporaryDirectory temporary_;
  std::string path_;
};

TEST_F(TemporaryDirectoryTest, OfAGameThatWasKilledIsRemovedByTheNext) {
  leaveOneBehind();
  ASSERT_EQ(entries(), 1U);
  const std::string left = fs::directory_iterator(scratch_.path())->path();
  ASSERT_TRUE(temporary_.makeFile(path_));
  EXPECT_FALSE(fs::exists(left));
  EXPECT_EQ(entries(), 1U);
}

TEST_F(TemporaryDirectoryTest, OfAGameThatRunsIsLeftAlone) {
  ASSERT_TRUE(temporary_.makeFile(path_));
  TemporaryDirectory other;
  std::string otherPath;
  ASSERT_TRUE(other.makeFile(otherPath));
  EXPECT_TRUE(fs::exists(path_));
  EXPECT_TRUE(fs::exists(otherPath));
  EXPECT_NE(temporary_.path(), other.path());
}

TEST_F(TemporaryDirectoryTest, GoesAtItsEnd) {
  {
    TemporaryDirectory other;
    std::string otherPath;
    ASSERT_TRUE(other.makeFile(otherPath));
  }
  EXPECT_EQ(entries(), 0U);
}

TEST_F(TemporaryDirectoryTest, ThatHoldsSomethingOfTheUsersKeepsIt) {
  const std::string like = scratch_ / "zovkpopup-downloads-abcdef";
  fs::create_directories(like + "/download-deep");
  std::ofstream(like + "/download-abcdef") << "part of a page";
  std::ofstream(like + "/letter.txt") << "dear";
  std::ofstream(like + "/download-deep/letter.txt") << "dear";
  ASSERT_TRUE(temporary_.makeFile(path_));
  EXPECT_FALSE(fs::exists(like + "/download-abcdef"));
  EXPECT_TRUE(fs::exists(like + "/letter.txt"));
  EXPECT_TRUE(fs::exists(like + "/download-deep/letter.txt"));
}

TEST_F(TemporaryDirectoryTest, ThatIsALinkIsNotFollowed) {
  const std::string target = scratch_ / "target";
  fs::create_directory(target);
  std::ofstream(target + "/download-abcdef") << "elsewhere";
  fs::create_directory_symlink(target, scratch_ / "zovkpopup-downloads-abcdef");
  ASSERT_TRUE(temporary_.makeFile(path_));
  EXPECT_TRUE(fs::exists(target + "/download-abcdef"));
}

TEST_F(TemporaryDirectoryTest, OfAnotherNameIsNotLookedAt) {
  const std::string other = scratch_ / "zovkpopup-master";
  fs::create_directory(other);
  std::ofstream(other + "/download-abcdef") << "source";
  ASSERT_TRUE(temporary_.makeFile(path_));
  EXPECT_TRUE(fs::exists(other + "/download-abcdef"));
}

}  // namespace
}  // namespace zovk
