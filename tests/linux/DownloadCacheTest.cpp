#include <fstream>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "LoopbackServer.h"
#include "ScopedVariable.h"
#include "ScratchDirectory.h"
#include "UrlFetch.h"
#include "platform/linux/http/CurlUrlSession.h"
#include "platform/linux/http/DownloadCache.h"
#include "platform/linux/system/PosixFileSystem.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::Optional;

/// A page on a server that knows its versions, and sessions that share a cache, as starts of one
/// game do.
class DownloadCacheTest : public testing::Test {
 protected:
  struct Page {
    std::string body = "first";
    std::string entityTag = "\"1\"";
    std::string lastModified;
    std::string cacheControl;
    std::string vary;
    int status = 200;
  };

  std::string serve(const std::string& path) {
    return server.handle(path, [this](const httplib::Request& request, httplib::Response& answer) {
      give(request, answer);
    });
  }
  void give(const httplib::Request& request, httplib::Response& answer) const {
    const auto known = request.get_header_value("If-None-Match");
    const auto since = request.get_header_value("If-Modified-Since");
    const bool sameTag = !page.entityTag.empty() && known == page.entityTag;
    if (sameTag || (!page.lastModified.empty() && since == page.lastModified)) {
      answer.status = 304;
      return;
    }
    answer.status = page.status;
    const auto add = [&](const char* name, const std::string& value) {
      if (!value.empty()) answer.set_header(name, value);
    };
    add("ETag", page.entityTag);
    add("Last-Modified", page.lastModified);
    add("Cache-Control", page.cacheControl);
    add("Vary", page.vary);
    answer.set_content(page.body, "text/html");
  }
  /// Returns the answer that a new session gets, with the status and the content of the file.
  std::pair<int, std::string> download(const std::string& url) {
    CurlUrlSession session({cachePath, {}});
    std::promise<std::pair<int, std::string>> end;
    const auto task = session.downloadTask(url, [&](const DownloadResult& result) {
      const auto text = result.path ? PosixFileSystem().read(*result.path) : std::nullopt;
      end.set_value({result.status, text.value_or(result.error.value_or("no file"))});
    });
    task->resume();
    return end.get_future().get();
  }
  /// Changes the cache from outside.
  void change(const char* sql) const {
    sqlite3* opened = nullptr;
    ASSERT_EQ(sqlite3_open(cachePath.c_str(), &opened), SQLITE_OK);
    const SqliteDatabase other(opened);
    ASSERT_EQ(sqlite3_exec(opened, sql, nullptr, nullptr, nullptr), SQLITE_OK);
  }
  /// Returns the validators of the requests so far; "-" for none.
  std::vector<std::string> conditions() const {
    std::vector<std::string> all;
    for (const auto& request : server.requests()) {
      const std::string line =
          request.get_header_value("If-None-Match") + request.get_header_value("If-Modified-Since");
      all.push_back(line.empty() ? "-" : line);
    }
    return all;
  }

  ScratchDirectory scratch;
  ScopedVariable temporary{"TMPDIR", scratch.path()};
  const std::string cachePath = scratch / "downloads.db";
  Page page;
  LoopbackServer server;
};

using Answer = std::pair<int, std::string>;

TEST_F(DownloadCacheTest, AnUnchangedFileCostsNoBodyAndArrivesWhole) {
  const std::string url = serve("/page");
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_THAT(conditions(), ElementsAre("-", "\"1\""));
}

TEST_F(DownloadCacheTest, AChangedFileReplacesTheKeptOne) {
  const std::string url = serve("/page");
  download(url);
  page.body = "second";
  page.entityTag = "\"2\"";
  EXPECT_EQ(download(url), Answer(200, "second"));
  EXPECT_EQ(download(url), Answer(200, "second"));
  EXPECT_THAT(conditions(), ElementsAre("-", "\"1\"", "\"2\""));
}

TEST_F(DownloadCacheTest, ADateAloneTellsVersionsApart) {
  page.entityTag = "";
  page.lastModified = "Sat, 21 Nov 2026 08:00:00 GMT";
  const std::string url = serve("/page");
  download(url);
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_THAT(conditions(), ElementsAre("-", page.lastModified));
}

TEST_F(DownloadCacheTest, AnEmptyFileIsKeptLikeAnyOther) {
  page.body = "";
  const std::string url = serve("/page");
  download(url);
  EXPECT_EQ(download(url), Answer(200, ""));
  EXPECT_THAT(conditions(), ElementsAre("-", "\"1\""));
}

TEST_F(DownloadCacheTest, FilesOfSeveralAddressesAreToldApart) {
  const std::string one = serve("/page?a=1");
  const std::string other = server.serve("/other", 200, "other");
  download(one);
  EXPECT_EQ(download(other), Answer(200, "other"));
  EXPECT_THAT(conditions(), ElementsAre("-", "-"));
}

TEST_F(DownloadCacheTest, AFileWithoutAVersionIsFetchedAgain) {
  page.entityTag = "";
  const std::string url = serve("/page");
  download(url);
  page.body = "second";
  EXPECT_EQ(download(url), Answer(200, "second"));
  EXPECT_THAT(conditions(), ElementsAre("-", "-"));
}

TEST_F(DownloadCacheTest, AFileThatMayNotBeStoredIsFetchedAgain) {
  page.cacheControl = "private, No-Store";
  const std::string url = serve("/page");
  download(url);
  download(url);
  page.cacheControl = "";
  page.vary = "*";
  download(url);
  download(url);
  EXPECT_THAT(conditions(), ElementsAre("-", "-", "-", "-"));
}

TEST_F(DownloadCacheTest, AnErrorPageIsNotKept) {
  page.status = 404;
  const std::string url = serve("/page");
  EXPECT_EQ(download(url), Answer(404, "first"));
  download(url);
  EXPECT_THAT(conditions(), ElementsAre("-", "-"));
}

TEST_F(DownloadCacheTest, ARedirectedFileIsNotKept) {
  serve("/page");
  const std::string url = server.handle(
      "/moved", [](const auto&, httplib::Response& answer) { answer.set_redirect("/page"); });
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_THAT(conditions(), ElementsAre("-", "-", "-", "-"));
}

TEST_F(DownloadCacheTest, NotModifiedFromElsewhereIsAskedAgain) {
  bool moved = false;
  const std::string url =
      server.handle("/page", [&](const httplib::Request& request, httplib::Response& answer) {
        if (moved) return answer.set_redirect("/other");
        give(request, answer);
      });
  server.handle("/other", [](const httplib::Request& request, httplib::Response& answer) {
    if (request.has_header("If-None-Match")) {
      answer.status = 304;
    } else {
      answer.set_content("elsewhere", "text/html");
    }
  });
  download(url);
  moved = true;
  EXPECT_EQ(download(url), Answer(200, "elsewhere"));
}

TEST_F(DownloadCacheTest, AFileThatIsGoneMeanwhileIsAskedForAgain) {
  std::string url;
  url = server.handle("/page", [&](const httplib::Request& request, httplib::Response& answer) {
    // Another process replaces the file while this one waits for the answer.
    if (request.has_header("If-None-Match")) DownloadCache(cachePath).keep(url, {"\"9\"", ""}, "x");
    give(request, answer);
  });
  download(url);
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_THAT(conditions(), ElementsAre("-", "\"1\"", "-"));
}

TEST_F(DownloadCacheTest, NotModifiedWithoutBeingAskedIsAnAnswerLikeAnyOther) {
  const std::string url = server.serve("/page", 304, "");
  EXPECT_EQ(download(url), Answer(304, ""));
  EXPECT_THAT(conditions(), ElementsAre("-"));
}

TEST_F(DownloadCacheTest, ACacheThatIsNoDatabaseIsBegunAfresh) {
  std::ofstream(cachePath) << std::string(5000, 'x');
  const std::string url = serve("/page");
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_THAT(conditions(), ElementsAre("-", "\"1\""));
}

TEST_F(DownloadCacheTest, ADamagedBodyIsFetchedAgain) {
  const std::string url = serve("/page");
  download(url);
  change("UPDATE downloads SET body = x'00'");
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_THAT(conditions(), ElementsAre("-", "\"1\"", "-"));
  EXPECT_EQ(download(url), Answer(200, "first"));
  EXPECT_THAT(conditions(), ElementsAre("-", "\"1\"", "-", "\"1\""));
}

TEST_F(DownloadCacheTest, ACacheThatSomeoneElseHoldsIsDoneWithout) {
  const std::string url = serve("/page");
  download(url);
  sqlite3* opened = nullptr;
  ASSERT_EQ(sqlite3_open(cachePath.c_str(), &opened), SQLITE_OK);
  const SqliteDatabase other(opened);
  ASSERT_EQ(sqlite3_exec(opened, "PRAGMA locking_mode = EXCLUSIVE; BEGIN EXCLUSIVE", nullptr,
                         nullptr, nullptr),
            SQLITE_OK);
  page.body = "second";
  EXPECT_EQ(download(url), Answer(200, "second"));
  EXPECT_THAT(conditions(), ElementsAre("-", "-"));
}

TEST_F(DownloadCacheTest, ACacheThatCannotBeMadeIsDoneWithout) {
  const std::string url = serve("/page");
  const CurlSessionSettings nowhere{scratch / "missing/downloads.db", {}};
  CurlUrlSession session(nowhere);
  std::promise<bool> end;
  const auto task = session.downloadTask(
      url, [&](const DownloadResult& result) { end.set_value(result.path.has_value()); });
  task->resume();
  EXPECT_TRUE(end.get_future().get());
}

TEST_F(DownloadCacheTest, TheCacheIsTheUsersAlone) {
  download(serve("/page"));
  struct stat file {};
  ASSERT_EQ(::stat(cachePath.c_str(), &file), 0);
  EXPECT_EQ(file.st_mode & 07777U, 0600U);
}

TEST_F(DownloadCacheTest, WhatWasUsedLongestAgoGoesWhenThereIsTooMuch) {
  DownloadCache cache(cachePath);
  const std::string body(DownloadCache::kLargestBody, 'x');
  constexpr std::size_t kFit = DownloadCache::kMostBytes / DownloadCache::kLargestBody;
  for (std::size_t i = 0; i <= kFit; ++i) cache.keep("page" + std::to_string(i), {"1", ""}, body);
  EXPECT_FALSE(cache.validators("page0").has_value());
  EXPECT_TRUE(cache.validators("page1").has_value());
  EXPECT_TRUE(cache.validators("page" + std::to_string(kFit)).has_value());
}

TEST_F(DownloadCacheTest, AnOldEntryThatIsReadCountsAsUsedAgain) {
  DownloadCache cache(cachePath);
  cache.keep("page", {"1", ""}, "a");
  change("UPDATE downloads SET used = unixepoch() - 86500");
  EXPECT_THAT(cache.body("page", {"1", ""}), Optional(std::string("a")));
  change("DELETE FROM downloads WHERE used < unixepoch() - 60");
  EXPECT_TRUE(cache.validators("page").has_value());
}

TEST_F(DownloadCacheTest, AnEntryOfTheSameDayIsReadWithoutAChange) {
  DownloadCache cache(cachePath);
  cache.keep("page", {"1", ""}, "a");
  change("UPDATE downloads SET used = unixepoch() - 80000");
  EXPECT_THAT(cache.body("page", {"1", ""}), Optional(std::string("a")));
  change("DELETE FROM downloads WHERE used < unixepoch() - 60");
  EXPECT_FALSE(cache.validators("page").has_value());
}

TEST_F(DownloadCacheTest, ACacheThatIsReplacedWhileItIsOpenIsBegunAfresh) {
  DownloadCache cache(cachePath);
  cache.keep("page", {"1", ""}, "a");
  std::ofstream(cachePath) << std::string(50000, 'x');
  EXPECT_FALSE(cache.body("page", {"1", ""}).has_value());
  cache.keep("page", {"2", ""}, "b");
  EXPECT_THAT(cache.body("page", {"2", ""}), Optional(std::string("b")));
}

TEST_F(DownloadCacheTest, AVeryLargeBodyIsNotKept) {
  DownloadCache cache(cachePath);
  cache.keep("page", {"1", ""}, std::string(DownloadCache::kLargestBody + 1, 'x'));
  EXPECT_FALSE(cache.validators("page").has_value());
}

TEST_F(DownloadCacheTest, ABodyKeepsItsZeroBytes) {
  DownloadCache cache(cachePath);
  const std::string body("a\0b", 3);
  cache.keep("page", {"1", "2"}, body);
  EXPECT_THAT(cache.body("page", {"1", "2"}), Optional(body));
  EXPECT_FALSE(cache.body("page", {"1", "3"}).has_value());
}

}  // namespace
}  // namespace zovk
