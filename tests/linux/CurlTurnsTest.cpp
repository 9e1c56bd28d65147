// Who waits for whom when there is much to send, and what that costs in descriptors.
#include <algorithm>
#include <filesystem>
#include <future>
#include <iterator>
#include <map>
#include <mutex>
#include <vector>

#include <gmock/gmock.h>

#include "LoopbackServer.h"
#include "UrlFetch.h"
#include "platform/linux/http/CurlUrlSession.h"

namespace zovk {
namespace {

using testing::Optional;

std::ptrdiff_t openDescriptors() {
  const std::filesystem::directory_iterator all("/proc/self/fd");
  return std::distance(begin(all), end(all));
}

/// A server whose answers wait until they are let go, and that knows how many wait.
class CurlTurnsTest : public testing::Test {
 protected:
  ~CurlTurnsTest() override { letGo(); }

  /// An address whose answer waits, on one of many names of this machine.
  std::string held(const std::string& path, int host = 1) {
    return onHost(server.handle(path,
                                [this, host](const auto&, httplib::Response& response) {
                                  enter(host);
                                  gone_.wait();
                                  response.set_content("text", "text/plain");
                                  leave(host);
                                }),
                  host);
  }
  static std::string onHost(std::string url, int host) {
    return url.replace(url.find("127.0.0.1"), 9, "h" + std::to_string(host) + ".localhost");
  }
  void waitForHeld(int count) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return inside_ >= count; });
  }
  int most() const {
    const std::lock_guard lock(mutex_);
    return most_;
  }
  int mostOf(int host) const {
    const std::lock_guard lock(mutex_);
    return mostOfHost_.at(host);
  }
  void letGo() {
    if (!std::exchange(isGone_, true)) let_.set_value();
  }
  std::future<DownloadResult> download(const std::string& url) {
    auto promise = std::make_shared<std::promise<DownloadResult>>();
    auto end = promise->get_future();
    tasks_.push_back(session.downloadTask(
        url, [promise](const DownloadResult& result) { promise->set_value(result); }));
    tasks_.back()->resume();
    return end;
  }

 private:
  void enter(int host) {
    const std::lock_guard lock(mutex_);
    most_ = std::max(most_, ++inside_);
    mostOfHost_[host] = std::max(mostOfHost_[host], ++insideOfHost_[host]);
    changed_.notify_all();
  }
  void leave(int host) {
    const std::lock_guard lock(mutex_);
    --inside_;
    --insideOfHost_[host];
  }

  mutable std::mutex mutex_;
  std::condition_variable changed_;
  int inside_ = 0;
  int most_ = 0;
  std::map<int, int> insideOfHost_;
  std::map<int, int> mostOfHost_;
  bool isGone_ = false;
  std::promise<void> let_;
  std::shared_future<void> gone_ = let_.get_future().share();
  std::vector<std::shared_ptr<UrlTask>> tasks_;

 protected:
  // They go first: the server's threads look at what stands above until it has ended.
  LoopbackServer server;
  ScopedVariable noProxy{"no_proxy", "*"};
  CurlUrlSession session;
};

TEST_F(CurlTurnsTest, TwoThousandRequestsGoEightAtATimeAndLeaveTheGameItsDescriptors) {
  constexpr int kCount = 2000;
  const auto before = openDescriptors();
  const std::string url = held("/query");
  std::vector<Fetch> all;
  for (int i = 0; i < kCount; ++i) all.push_back(beginFetch(session, get(url)));
  waitForHeld(8);
  EXPECT_LE(openDescriptors() - before, 64 + 8) << "eight are the server's ends";
  letGo();
  for (Fetch& one : all) EXPECT_THAT(one.wait().body, Optional(std::string("text")));
  EXPECT_EQ(most(), 8);
  EXPECT_LE(openDescriptors() - before, 64 + 8);
}

TEST_F(CurlTurnsTest, RequestsThatWaitGoInOrder) {
  CurlSessionSettings settings;
  settings.mostDataRequests = 1;
  CurlUrlSession narrow(settings);
  std::vector<Fetch> all;
  all.push_back(beginFetch(narrow, get(held("/first"))));
  std::vector<std::string> expected{"/first"};
  for (int i = 0; i < 20; ++i) {
    expected.push_back("/" + std::to_string(i));
    all.push_back(beginFetch(narrow, get(server.serve(expected.back(), 200, "text"))));
  }
  waitForHeld(1);
  letGo();
  for (Fetch& one : all) one.wait();
  std::vector<std::string> order;
  for (const auto& request : server.requests()) order.push_back(request.path);
  EXPECT_EQ(order, expected);
}

TEST_F(CurlTurnsTest, OneHostGivesSixDownloadsAtATime) {
  std::vector<std::future<DownloadResult>> all;
  for (int i = 0; i < 30; ++i) all.push_back(download(held("/page")));
  waitForHeld(6);
  // Whatever else was sent is on its way before this.
  EXPECT_FALSE(fetch(session, get(server.serve("/query", 200, "text"))).error);
  letGo();
  for (auto& one : all) EXPECT_FALSE(one.get().error);
  EXPECT_EQ(most(), 6);
}

TEST_F(CurlTurnsTest, DownloadsThatStallOnOneHostHoldUpNoOther) {
  std::vector<std::future<DownloadResult>> stalled;
  for (int host = 2; host <= 5; ++host) {
    const std::string url = held("/page" + std::to_string(host), host);
    for (int i = 0; i < 20; ++i) stalled.push_back(download(url));
  }
  waitForHeld(24);
  auto other = download(server.serve("/other", 200, "text"));
  ASSERT_EQ(other.wait_for(std::chrono::seconds(30)), std::future_status::ready);
  EXPECT_FALSE(other.get().error);
  EXPECT_FALSE(fetch(session, get(server.serve("/query", 200, "text"))).error);
  letGo();
  for (auto& one : stalled) EXPECT_FALSE(one.get().error);
  for (int host = 2; host <= 5; ++host) EXPECT_EQ(mostOf(host), 6);
}

TEST_F(CurlTurnsTest, DownloadsFromManyHostsKeepToTheirDescriptors) {
  const auto before = openDescriptors();
  std::vector<std::future<DownloadResult>> all;
  for (int host = 2; host < 62; ++host) {
    const std::string url = held("/page" + std::to_string(host), host);
    for (int i = 0; i < 3; ++i) all.push_back(download(url));
  }
  waitForHeld(26);
  EXPECT_LE(openDescriptors() - before, 64 + most()) << "the server's ends are not ours";
  letGo();
  for (auto& one : all) EXPECT_FALSE(one.get().error);
  EXPECT_EQ(most(), 26);
}

TEST_F(CurlTurnsTest, WhatWaitsForItsTurnCanBeCancelled) {
  std::vector<std::future<DownloadResult>> stalled;
  for (int i = 0; i < 6; ++i) stalled.push_back(download(held("/page")));
  waitForHeld(6);
  std::promise<DownloadResult> end;
  const auto waiting = session.downloadTask(
      held("/page"), [&](const DownloadResult& result) { end.set_value(result); });
  waiting->resume();
  waiting->cancel();
  EXPECT_THAT(end.get_future().get().error, Optional(std::string("cancelled")));
}

TEST_F(CurlTurnsTest, ShutDownWithThousandsThatWaitIsQuickAndCallsNothing) {
  int called = 0;
  for (int i = 0; i < 2000; ++i) {
    session.dataTask(get(held("/query")), [&](const DataResult&) { ++called; })->resume();
    session.downloadTask(held("/page"), [&](const DownloadResult&) { ++called; })->resume();
  }
  waitForHeld(14);
  const auto start = std::chrono::steady_clock::now();
  session.shutDown();
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
  EXPECT_EQ(called, 0);
}

}  // namespace
}  // namespace zovk
