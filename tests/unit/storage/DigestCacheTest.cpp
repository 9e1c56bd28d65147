#include <atomic>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "storage/DigestCache.h"
#include "text/Md5.h"
#include "unit/storage/StampedFileSystem.h"

namespace zovk {
namespace {

constexpr double kNow = 1'700'000'000;
constexpr const char* kPath = "/page";

class DigestCacheOfAFile : public ::testing::Test {
 protected:
  std::optional<std::string> digestOf(const std::string& path) {
    FileGlance glance(files_);
    return cache_.digest(path, glance);
  }
  std::string digest() { return digestOf(kPath).value_or("absent"); }

  StampedFileSystem files_;
  StandingClock clock_{kNow};
  DigestCache cache_{files_, clock_};
};

TEST_F(DigestCacheOfAFile, ReadsASettledFileOnce) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  for (int i = 0; i < 3; ++i) EXPECT_EQ(digest(), md5Hex("abc"));
  EXPECT_EQ(files_.readCount(), 1);
}

TEST_F(DigestCacheOfAFile, IsNotFooledByARewriteThatLeavesEveryStampTheSame) {
  const FileIdentity identity = stampedAt(kNow - 0.001, 3);
  files_.put(kPath, identity, "abc");
  EXPECT_EQ(digest(), md5Hex("abc"));
  files_.put(kPath, identity, "xyz");
  EXPECT_EQ(digest(), md5Hex("xyz"));
}

TEST_F(DigestCacheOfAFile, BeginsToTrustTheStampsAfterAFewHundredthsOfASecond) {
  files_.put(kPath, stampedAt(kNow, 3), "abc");
  for (const double moment : {kNow, kNow + 0.02, kNow + 0.04}) {
    clock_.set(moment);
    digest();
  }
  EXPECT_EQ(files_.readCount(), 3);
  clock_.set(kNow + 0.06);
  digest();
  digest();
  EXPECT_EQ(files_.readCount(), 4);
}

TEST_F(DigestCacheOfAFile, NeverTrustsStampsOfTheFuture) {
  files_.put(kPath, stampedAt(kNow + 3600, 3), "abc");
  digest();
  files_.put(kPath, stampedAt(kNow + 3600, 3), "xyz");
  EXPECT_EQ(digest(), md5Hex("xyz"));
}

TEST_F(DigestCacheOfAFile, ReadsAgainWhenAnyPartOfTheIdentityChanges) {
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
    EXPECT_EQ(digest(), md5Hex("abc")) << i;
    files_.put(kPath, others[i], "xyz");
    EXPECT_EQ(digest(), md5Hex("xyz")) << i;
  }
}

TEST_F(DigestCacheOfAFile, JudgesAFileByItsChangeTimeThoughItsModificationTimeIsOld) {
  FileIdentity identity = stampedAt(kNow, 3);
  identity.modifiedNanoseconds -= 5'000'000'000;
  files_.put(kPath, identity, "abc");
  digest();
  files_.put(kPath, identity, "xyz");
  EXPECT_EQ(digest(), md5Hex("xyz"));
}

TEST_F(DigestCacheOfAFile, DoesNotRememberAFileThatChangesWhileItIsRead) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  files_.duringRead = [this] { files_.put(kPath, stampedAt(kNow - 5, 3), "xyz"); };
  digest();
  files_.duringRead = nullptr;
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  EXPECT_EQ(digest(), md5Hex("abc"));
  EXPECT_EQ(files_.readCount(), 2);
}

TEST_F(DigestCacheOfAFile, DoesNotRememberAFreshFileThoughReadingItTakesLong) {
  const FileIdentity identity = stampedAt(kNow - 0.001, 3);
  files_.put(kPath, identity, "abc");
  files_.afterRead = [&] {
    files_.put(kPath, identity, "xyz");  // in the same step of the file times
    clock_.set(kNow + 1);
  };
  digest();
  files_.afterRead = nullptr;
  EXPECT_EQ(digest(), md5Hex("xyz"));
}

TEST_F(DigestCacheOfAFile, GoesByWhatAGlanceHasSeenAndReadsTheFileAsItIs) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  digest();
  FileGlance glance(files_);
  EXPECT_EQ(cache_.digest(kPath, glance), md5Hex("abc"));
  files_.put(kPath, stampedAt(kNow - 5, 3), "xyz");
  EXPECT_EQ(cache_.digest(kPath, glance), md5Hex("abc")) << "one piece of work, one state";
  EXPECT_EQ(digest(), md5Hex("xyz"));
}

TEST_F(DigestCacheOfAFile, DoesNotRememberWhatChangedSinceTheGlance) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  FileGlance glance(files_);
  glance.identity(kPath);
  files_.put(kPath, stampedAt(kNow - 5, 3), "xyz");
  EXPECT_EQ(cache_.digest(kPath, glance), md5Hex("xyz"));
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  EXPECT_EQ(digest(), md5Hex("abc"));
}

TEST_F(DigestCacheOfAFile, DoesNotRememberAFileThatWasNotReadToItsEnd) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  files_.breakNextRead(kPath, 1);
  EXPECT_EQ(digest(), md5Hex("a"));
  EXPECT_EQ(digest(), md5Hex("abc"));
}

TEST_F(DigestCacheOfAFile, ForgetsAFileThatIsGone) {
  files_.put(kPath, stampedAt(kNow - 10, 3), "abc");
  digest();
  files_.take(kPath);
  EXPECT_EQ(digestOf(kPath), std::nullopt);
  files_.duringRead = [this] { files_.take(kPath); };
  files_.put(kPath, stampedAt(kNow - 8, 3), "xyz");
  EXPECT_EQ(digestOf(kPath), std::nullopt) << "gone between looking and reading";
}

TEST_F(DigestCacheOfAFile, KeepsPathsApart) {
  files_.put("/a", stampedAt(kNow - 10, 3), "abc");
  files_.put("/b", stampedAt(kNow - 10, 3), "xyz");
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(digestOf("/a"), md5Hex("abc"));
    EXPECT_EQ(digestOf("/b"), md5Hex("xyz"));
  }
  EXPECT_EQ(files_.readCount(), 2);
}

TEST_F(DigestCacheOfAFile, StaysRightWithMoreFilesThanItKeeps) {
  constexpr int kKept = 20'000;
  const auto digestOfNumber = [this](int i) {
    const std::string text = std::to_string(i);
    files_.put("/" + text, stampedAt(kNow - 10, text.size()), text);
    return digestOf("/" + text);
  };
  for (int i = 0; i < kKept; ++i) ASSERT_EQ(digestOfNumber(i), md5Hex(std::to_string(i)));
  EXPECT_EQ(digestOfNumber(0), md5Hex("0"));
  EXPECT_EQ(files_.readCount(), kKept) << "all that it can keep";
  EXPECT_EQ(digestOfNumber(kKept), md5Hex(std::to_string(kKept)));
  EXPECT_EQ(digestOfNumber(0), md5Hex("0"));
  EXPECT_EQ(files_.readCount(), kKept + 2) << "one more: it starts over and reads the first again";
}

TEST_F(DigestCacheOfAFile, GivesManyThreadsWhatTheFileHeldDuringTheCall) {
  std::atomic<int> written{0};
  files_.put(kPath, stampedAt(kNow - 1000, 1), "0");
  std::vector<std::thread> readers;
  std::atomic<bool> stale{false};
  for (int i = 0; i < 4; ++i) {
    readers.emplace_back([&] {
      for (int before = written; before < 500; before = written) {
        const std::string seen = digest();
        bool known = false;
        for (int n = before; n <= written + 1 && !known; ++n)
          known = seen == md5Hex(std::to_string(n));
        if (!known) stale = true;
      }
    });
  }
  for (int n = 1; n <= 500; ++n) {
    const std::string text = std::to_string(n);
    files_.put(kPath, stampedAt(kNow - 1000 + n, text.size()), text);
    written = n;
  }
  for (std::thread& reader : readers) reader.join();
  EXPECT_FALSE(stale);
  EXPECT_EQ(digest(), md5Hex("500"));
}

}  // namespace
}  // namespace zovk
