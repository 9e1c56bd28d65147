#include <vector>

#include <gtest/gtest.h>

#include "storage/TextCache.h"
#include "unit/storage/StampedFileSystem.h"

namespace zovk {
namespace {

constexpr double kNow = 1'700'000'000;
constexpr const char* kPath = "/once";

class TextCacheOfAFile : public ::testing::Test {
 protected:
  std::string text(const std::string& path = kPath) {
    FileGlance glance(files_);
    const auto found = cache_.text(path, glance);
    return found != nullptr ? found->text() : "absent";
  }

  StampedFileSystem files_;
  StandingClock clock_{kNow};
  TextCache cache_{files_, clock_};
};

TEST_F(TextCacheOfAFile, ReadsASettledFileOnce) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(text(), "abc");
  EXPECT_EQ(files_.readCount(), 1);
}

TEST_F(TextCacheOfAFile, IsNotFooledByARewriteThatLeavesEveryStampTheSame) {
  const FileIdentity identity = stampedAt(kNow - 0.001, 3);
  files_.put(kPath, identity, "abc");
  EXPECT_EQ(text(), "abc");
  files_.put(kPath, identity, "xyz");
  EXPECT_EQ(text(), "xyz");
}

TEST_F(TextCacheOfAFile, ReadsAgainWhenAnyPartOfTheIdentityChanges) {
  const FileIdentity first = stampedAt(kNow - 10, 3);
  std::vector<FileIdentity> others(6, first);
  others[0].device = 2;
  others[1].inode = 101;
  others[2].size = 4;
  others[3].modifiedNanoseconds += 1;
  others[4].modifiedNanoseconds -= 5'000'000'000;  // set back by hand
  others[5].changedNanoseconds += 1;
  for (std::size_t i = 0; i < others.size(); ++i) {
    files_.put(kPath, first, "abc");
    EXPECT_EQ(text(), "abc") << i;
    files_.put(kPath, others[i], "xyz");
    EXPECT_EQ(text(), "xyz") << i;
  }
}

TEST_F(TextCacheOfAFile, DoesNotRememberAFileThatChangesWhileItIsRead) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  files_.duringRead = [this] { files_.put(kPath, stampedAt(kNow - 5, 3), "xyz"); };
  text();
  files_.duringRead = nullptr;
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  EXPECT_EQ(text(), "abc");
}

TEST_F(TextCacheOfAFile, DoesNotRememberAFreshFileThoughReadingItTakesLong) {
  const FileIdentity identity = stampedAt(kNow - 0.001, 3);
  files_.put(kPath, identity, "abc");
  files_.afterRead = [&] {
    files_.put(kPath, identity, "xyz");  // in the same step of the file times
    clock_.set(kNow + 1);
  };
  text();
  files_.afterRead = nullptr;
  EXPECT_EQ(text(), "xyz");
}

TEST_F(TextCacheOfAFile, DoesNotRememberAReadThatFailed) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  files_.breakNextRead(kPath, 1);
  EXPECT_EQ(text(), "absent");
  EXPECT_EQ(text(), "abc");
}

TEST_F(TextCacheOfAFile, RemembersThatAFileIsNoText) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "ab\xff");
  EXPECT_EQ(text(), "absent");
  EXPECT_EQ(text(), "absent");
  EXPECT_EQ(files_.readCount(), 1);
  files_.put(kPath, stampedAt(kNow - 9, 3), "abc");
  EXPECT_EQ(text(), "abc");
}

TEST_F(TextCacheOfAFile, ForgetsAFileThatIsGone) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  text();
  files_.take(kPath);
  EXPECT_EQ(text(), "absent");
}

TEST_F(TextCacheOfAFile, KeepsPathsApart) {
  files_.put("/a", stampedAt(kNow - 10, 3), "abc");
  files_.put("/b", stampedAt(kNow - 10, 3), "xyz");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(text("/a"), "abc");
    EXPECT_EQ(text("/b"), "xyz");
  }
}

TEST_F(TextCacheOfAFile, LeavesATextWithItsHolderWhenTheFileChanges) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  FileGlance glance(files_);
  const auto held = cache_.text(kPath, glance);
  files_.put(kPath, stampedAt(kNow - 9, 3), "xyz");
  EXPECT_EQ(text(), "xyz");
  EXPECT_EQ(held->text(), "abc");
}

}  // namespace
}  // namespace zovk
