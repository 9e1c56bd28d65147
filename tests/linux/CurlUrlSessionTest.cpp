#include <chrono>
#include <memory>

#include <gmock/gmock.h>
#include <zlib.h>

#include "LoopbackServer.h"
#include "PollWait.h"
#include "UrlFetch.h"
#include "platform/linux/http/CurlTransfer.h"
#include "platform/linux/http/CurlUrlSession.h"

namespace zovk {
namespace {

using std::chrono::seconds;
using testing::HasSubstr;
using testing::Optional;

std::string pack(const std::string& text) {
  std::string packed(compressBound(text.size()), '\0');
  uLongf size = packed.size();
  compress2(reinterpret_cast<Bytef*>(packed.data()), &size,
            reinterpret_cast<const Bytef*>(text.data()), text.size(), Z_BEST_SPEED);
  packed.resize(size);
  return packed;
}

class CurlUrlSessionTest : public testing::Test {
 protected:
  UrlRequest post(const std::string& url, std::optional<std::string> body) {
    UrlRequest request = get(url);
    request.method = "POST";
    request.body = std::move(body);
    return request;
  }
  std::string redirect(const std::string& from, const std::string& to, int status = 302) {
    return server.handle(from, [to, status](const httplib::Request&, httplib::Response& response) {
      response.set_redirect(to, status);
    });
  }

  LoopbackServer server;
  CurlUrlSession session;
};

TEST_F(CurlUrlSessionTest, APostSendsItsBodyAndNoContentType) {
  const std::string body("{\"a\":\"\0\"}", 9);
  EXPECT_FALSE(fetch(session, post(server.serve("/report", 200, "ok"), body)).error);
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 1U);
  EXPECT_EQ(requests[0].method, "POST");
  EXPECT_EQ(requests[0].body, body);
  EXPECT_FALSE(requests[0].has_header("Content-Type"));
  EXPECT_FALSE(requests[0].has_header("Expect"));
}

TEST_F(CurlUrlSessionTest, ALongPostDoesNotWaitForTheServersWord) {
  const std::string body(2 * 1024 * 1024, 'x');
  EXPECT_FALSE(fetch(session, post(server.serve("/report", 200, "ok"), body)).error);
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 1U);
  EXPECT_EQ(requests[0].body, body);
  EXPECT_FALSE(requests[0].has_header("Expect"));
}

TEST_F(CurlUrlSessionTest, APostMayHaveNoBody) {
  EXPECT_FALSE(fetch(session, post(server.serve("/report", 200, "ok"), std::nullopt)).error);
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 1U);
  EXPECT_EQ(requests[0].method, "POST");
  EXPECT_EQ(requests[0].body, "");
  EXPECT_EQ(requests[0].get_header_value("Content-Length"), "0");
}

TEST_F(CurlUrlSessionTest, TheQueryIsSentAsItStands) {
  EXPECT_FALSE(fetch(session, get(server.serve("/check", 200, "ok") + "?a=1&sig=%20x&b=")).error);
  EXPECT_EQ(server.requests().at(0).target, "/check?a=1&sig=%20x&b=");
}

TEST_F(CurlUrlSessionTest, WhatGoesOverTheWireIsTheAddressAsItIsRead) {
  const std::string query = "?x=a|b&y=[1]&z=50%&q=\xe4\xb8\xad&u=/../%2e";
  fetch(session, get(server.url("/x/../a|b/%2e%2e/\xe4\xb8\xad/50%") + query));
  EXPECT_EQ(server.requests().at(0).target, "/%E4%B8%AD/50%25" + query);
}

TEST_F(CurlUrlSessionTest, ACompressedAnswerIsUnpacked) {
  const std::string text(10'000, 'a');  // which the server compresses
  const DataResult result = fetch(session, get(server.serve("/packed", 200, text)));
  EXPECT_THAT(result.body, Optional(text));
  EXPECT_THAT(server.requests().at(0).get_header_value("Accept-Encoding"), HasSubstr("gzip"));
}

TEST_F(CurlUrlSessionTest, OneConnectionServesRequestsThatFollowEachOther) {
  const std::string url = server.serve("/page", 200, "text");
  for (int i = 0; i < 3; ++i) fetch(session, get(url));
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 3U);
  EXPECT_EQ(requests[0].remote_port, requests[2].remote_port);
}

TEST_F(CurlUrlSessionTest, RedirectsAreFollowedAndTheLastAddressReported) {
  const std::string end = server.serve("/end", 200, "text");
  redirect("/middle", "/end", 307);
  const DataResult result = fetch(session, get(redirect("/start", "/middle")));
  EXPECT_EQ(result.url, end);
  EXPECT_EQ(result.status, 200);
  EXPECT_THAT(result.body, Optional(std::string("text")));
}

TEST_F(CurlUrlSessionTest, ARedirectedPostBecomesAGetUnlessToldOtherwise) {
  server.serve("/end", 200, "text");
  fetch(session, post(redirect("/see", "/end", 303), "body"));
  fetch(session, post(redirect("/found", "/end", 302), "body"));
  fetch(session, post(redirect("/keep", "/end", 307), "body"));
  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 6U);
  EXPECT_EQ(requests[1].method, "GET");
  EXPECT_EQ(requests[1].body, "");
  EXPECT_EQ(requests[3].method, "GET");
  EXPECT_EQ(requests[5].method, "POST");
  EXPECT_EQ(requests[5].body, "body");
}

TEST_F(CurlUrlSessionTest, EndlessRedirectsEndInAnError) {
  const DataResult result = fetch(session, get(redirect("/round", "/round")));
  EXPECT_TRUE(result.error);
  EXPECT_FALSE(result.body);
  EXPECT_EQ(server.requests().size(), 17U);
}

TEST_F(CurlUrlSessionTest, ARedirectOutOfTheWebIsAnError) {
  EXPECT_TRUE(fetch(session, get(redirect("/file", "file:///etc/passwd"))).error);
}

TEST_F(CurlUrlSessionTest, OnlyWebAddressesAreFetched) {
  for (const char* url : {"file:///etc/passwd", "ftp://127.0.0.1/a", "127.0.0.1/a", "dict://a/b"}) {
    const DataResult result = fetch(session, get(url));
    EXPECT_TRUE(result.error) << url;
    EXPECT_FALSE(result.body) << url;
  }
}

TEST_F(CurlUrlSessionTest, AnAddressWithAZeroByteIsNotCutShort) {
  const std::string url = server.serve("/page", 200, "text") + std::string("\0x", 2);
  EXPECT_TRUE(fetch(session, get(url)).error);
  EXPECT_TRUE(server.requests().empty());
}

TEST_F(CurlUrlSessionTest, ATransferThatStandsStillEndsAfterTheRequestsTimeout) {
  UrlRequest request = get(server.url("/silent"));
  request.timeout = seconds(1);
  const auto start = std::chrono::steady_clock::now();
  const DataResult result = fetch(session, request);
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_TRUE(result.error);
  EXPECT_EQ(result.status, 0);
  EXPECT_GE(waited, std::chrono::milliseconds(900));
  EXPECT_LT(waited, seconds(10));
}

TEST_F(CurlUrlSessionTest, TheSessionsOwnTimeHoldsWhereTheRequestNamesNone) {
  CurlSessionSettings settings;
  settings.longestStall = std::chrono::milliseconds(100);
  CurlUrlSession hasty(settings);
  EXPECT_THAT(fetch(hasty, get(server.url("/silent"))).error,
              Optional(std::string("Timeout was reached")));
}

TEST_F(CurlUrlSessionTest, AnAnswerThatStopsHalfwayIsAnErrorToo) {
  const std::string url = server.handle("/half", [this](const auto&, httplib::Response& response) {
    response.set_content_provider(100, "text/plain",
                                  [this](std::size_t, std::size_t, httplib::DataSink& sink) {
                                    sink.write("half", 4);
                                    server.waitForEnd();
                                    return false;
                                  });
  });
  UrlRequest request = get(url);
  request.timeout = seconds(1);
  const auto start = std::chrono::steady_clock::now();
  const DataResult result = fetch(session, request);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(900));
  EXPECT_TRUE(result.error);
  EXPECT_FALSE(result.body);
}

TEST_F(CurlUrlSessionTest, ATransferThatGoesOnMayTakeLongerThanTheTimeout) {
  const std::string url = server.handle("/slow", [](const auto&, httplib::Response& response) {
    response.set_chunked_content_provider("application/octet-stream",
                                          [](std::size_t offset, httplib::DataSink& sink) {
                                            waitReadable(-1, std::chrono::milliseconds(400));
                                            sink.write("x", 1);
                                            if (offset == 6) sink.done();
                                            return true;
                                          });
  });
  UrlRequest request = get(url);
  request.timeout = seconds(2);
  EXPECT_THAT(fetch(session, request).body, Optional(std::string("xxxxxxx")));
}

TEST_F(CurlUrlSessionTest, AnAnswerThatSaysItIsTooLongIsAnError) {
  const std::string url = server.handle("/long", [](const auto&, httplib::Response& response) {
    response.set_content_provider(CurlTransfer::kMaximumBody + 1, "text/plain",
                                  [](auto, auto, httplib::DataSink&) { return false; });
  });
  EXPECT_TRUE(fetch(session, get(url)).error);
}

TEST_F(CurlUrlSessionTest, AnAnswerThatTurnsOutTooLongIsAnError) {
  const auto piece = std::make_shared<const std::string>(1024 * 1024, 'x');
  const auto provide = [piece](std::size_t, httplib::DataSink& sink) {
    return sink.write(piece->data(), piece->size());
  };
  const std::string url =
      server.handle("/long", [provide](const auto&, httplib::Response& response) {
        response.set_chunked_content_provider("application/octet-stream", provide);
      });
  EXPECT_THAT(fetch(session, get(url)).error, Optional(std::string("answer too long")));
}

TEST_F(CurlUrlSessionTest, AnAnswerThatUnpacksToTooMuchIsAnError) {
  const std::string packed = pack(std::string(CurlTransfer::kMaximumBody + 1, 'x'));
  ASSERT_LT(packed.size(), 1024U * 1024);
  const std::string url = server.handle("/packed", [&](const auto&, httplib::Response& response) {
    response.set_header("Content-Encoding", "deflate");
    response.set_content(packed, "application/octet-stream");
  });
  EXPECT_THAT(fetch(session, get(url)).error, Optional(std::string("answer too long")));
}

TEST_F(CurlUrlSessionTest, ATransferOnTheWireCanBeCancelled) {
  Fetch pending = beginFetch(session, get(server.url("/silent")));
  server.waitForSilent(1);
  pending.task->cancel();
  EXPECT_THAT(pending.wait().error, Optional(std::string("cancelled")));
}

TEST_F(CurlUrlSessionTest, AStalledRequestDoesNotHoldUpOthers) {
  Fetch stalled = beginFetch(session, get(server.url("/silent")));
  server.waitForSilent(1);
  EXPECT_FALSE(fetch(session, get(server.serve("/page", 200, "text"))).error);
  stalled.task->cancel();
}

TEST_F(CurlUrlSessionTest, ShutDownWithRequestsOnTheWireIsQuickAndCallsNothing) {
  int called = 0;
  for (int i = 0; i < 5; ++i) {
    session.dataTask(get(server.url("/silent")), [&](const DataResult&) { ++called; })->resume();
  }
  server.waitForSilent(5);
  const auto start = std::chrono::steady_clock::now();
  session.shutDown();
  EXPECT_LT(std::chrono::steady_clock::now() - start, seconds(2));
  EXPECT_EQ(called, 0);
}

TEST_F(CurlUrlSessionTest, ACompletionMayLetGoOfTheSession) {
  auto own = std::make_unique<CurlUrlSession>();
  std::promise<void> done;
  CurlUrlSession& shared = *own;
  const auto task = shared.dataTask(
      get(server.serve("/page", 200, "text")),
      [&done, own = std::make_shared<decltype(own)>(std::move(own))](const DataResult&) {
        own->reset();
        done.set_value();
      });
  task->resume();
  EXPECT_EQ(done.get_future().wait_for(seconds(30)), std::future_status::ready);
}

}  // namespace
}  // namespace zovk
