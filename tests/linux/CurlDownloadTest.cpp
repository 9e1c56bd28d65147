#include <atomic>
#include <filesystem>
#include <future>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "LoopbackServer.h"
#include "ScopedVariable.h"
#include "ScratchDirectory.h"
#include "UrlFetch.h"
#include "platform/linux/http/CurlUrlSession.h"
#include "platform/linux/system/PosixFileSystem.h"

namespace zovk {
namespace {

using testing::IsEmpty;
using testing::Optional;

namespace fs = std::filesystem;

/// Temporary files go into a directory of the test's own.
class CurlDownloadTest : public testing::Test {
 protected:
  std::vector<std::string> leftovers() const {
    return PosixFileSystem().listRecursively(scratch.path()).value();
  }
  template <class Inside>
  DownloadResult download(const std::string& url, Inside inside) {
    std::promise<DownloadResult> end;
    const auto task = session->downloadTask(url, [&](const DownloadResult& result) {
      inside(result);
      end.set_value(result);
    });
    task->resume();
    return end.get_future().get();
  }

  ScratchDirectory scratch;
  ScopedVariable temporary{"TMPDIR", scratch.path()};
  LoopbackServer server;
  std::unique_ptr<CurlUrlSession> session = std::make_unique<CurlUrlSession>();
};

TEST_F(CurlDownloadTest, TheFileAndItsDirectoryAreTheUsersAlone) {
  struct stat file {};
  struct stat directory {};
  const auto result =
      download(server.serve("/page", 200, "text"), [&](const DownloadResult& inner) {
        EXPECT_EQ(::stat(inner.path->c_str(), &file), 0);
        EXPECT_EQ(::stat(fs::path(*inner.path).parent_path().c_str(), &directory), 0);
      });
  EXPECT_EQ(file.st_mode & 07777U, 0600U);
  EXPECT_EQ(directory.st_mode & 07777U, 0700U);
  EXPECT_TRUE(result.path->starts_with(scratch.path() + "/"));
}

TEST_F(CurlDownloadTest, ALongFileArrivesWhole) {
  std::string text;
  for (int i = 0; i < 3'000'000; ++i) text += static_cast<char>(i % 251);
  std::optional<std::string> read;
  download(server.serve("/page", 200, text),
           [&](const DownloadResult& result) { read = PosixFileSystem().read(*result.path); });
  EXPECT_EQ(read, text);
}

TEST_F(CurlDownloadTest, ACompletionMayMoveTheFileAway) {
  const std::string place = scratch / "kept";
  download(server.serve("/page", 200, "text"),
           [&](const DownloadResult& result) { fs::rename(*result.path, place); });
  session.reset();
  EXPECT_THAT(PosixFileSystem().read(place), Optional(std::string("text")));
}

TEST_F(CurlDownloadTest, NothingIsLeftAfterTheSession) {
  download(server.serve("/page", 200, "text"), [](const DownloadResult&) {});
  session.reset();
  EXPECT_THAT(leftovers(), IsEmpty());
}

TEST_F(CurlDownloadTest, NothingIsLeftOfADownloadThatIsDropped) {
  const auto task = session->downloadTask(server.url("/silent"), [](const DownloadResult&) {});
  task->resume();
  server.waitForSilent(1);
  session->shutDown();
  EXPECT_THAT(leftovers(), IsEmpty());
}

TEST_F(CurlDownloadTest, WithoutATemporaryDirectoryTheDownloadFails) {
  const ScopedVariable missing("TMPDIR", scratch / "missing");
  const auto result = download(server.serve("/page", 200, "text"), [](const DownloadResult&) {});
  EXPECT_TRUE(result.error);
  EXPECT_FALSE(result.path);
}

TEST_F(CurlDownloadTest, AnEmptyAnswerIsAnEmptyFile) {
  std::optional<std::string> read;
  const auto result = download(server.serve("/page", 200, ""), [&](const DownloadResult& inner) {
    read = PosixFileSystem().read(inner.path.value_or(""));
  });
  EXPECT_FALSE(result.error);
  EXPECT_THAT(read, Optional(std::string()));
}

TEST_F(CurlDownloadTest, AnEmptyAnswerNeedsATemporaryDirectoryToo) {
  const ScopedVariable missing("TMPDIR", scratch / "missing");
  const auto result = download(server.serve("/page", 200, ""), [](const DownloadResult&) {});
  EXPECT_TRUE(result.error);
  EXPECT_FALSE(result.path);
}

TEST_F(CurlDownloadTest, NoFileIsMadeBeforeTheFirstByte) {
  const auto task = session->downloadTask(server.url("/silent"), [](const DownloadResult&) {});
  task->resume();
  server.waitForSilent(1);
  EXPECT_THAT(leftovers(), IsEmpty());
}

TEST_F(CurlDownloadTest, ManyDownloadsAllComeToAnEnd) {
  constexpr int kCount = 50;
  const std::string url = server.serve("/page", 200, "text");
  int count = 0;
  std::promise<void> all;
  for (int i = 0; i < kCount; ++i) {
    session
        ->downloadTask(url,
                       [&](const DownloadResult& result) {
                         EXPECT_FALSE(result.error);
                         if (++count == kCount) all.set_value();
                       })
        ->resume();
  }
  EXPECT_EQ(all.get_future().wait_for(std::chrono::seconds(30)), std::future_status::ready);
}

}  // namespace
}  // namespace zovk
