#include <chrono>

#include "e2e/service/RawConnection.h"
#include "e2e/service/ServiceFixture.h"

namespace zovk {
namespace {

using Clock = std::chrono::steady_clock;

class ServiceFaults : public ServiceFixture {
 protected:
  static constexpr const char* kPagePath = "/pages/welcome.html";

  void startWith(const std::string& fault) { start({"--fault", fault}); }
  std::string rawPage() {
    return exchange(port(), "GET /pages/welcome.html HTTP/1.1\r\nConnection: close\r\n\r\n");
  }
};

TEST_F(ServiceFaults, DelayMakesTheAnswerLate) {
  startWith("/popup/get_info=delay:300");
  const auto begin = Clock::now();
  EXPECT_EQ(getConfig()->status, 200);
  EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(300));
}

TEST_F(ServiceFaults, DropClosesWithoutAnAnswer) {
  startWith("/pages/welcome.html=drop");
  EXPECT_EQ(rawPage(), "");
  EXPECT_FALSE(client().Get(kPagePath));
  EXPECT_TRUE(getConfig());
}

TEST_F(ServiceFaults, TruncateAnnouncesMoreThanItSends) {
  startWith("/pages/welcome.html=truncate:77");
  const std::string answer = rawPage();
  const std::string announced = std::to_string(std::string(kPage).size() + 77);
  EXPECT_NE(answer.find("Content-Length: " + announced), std::string::npos) << answer;
  EXPECT_TRUE(answer.ends_with(std::string("\r\n\r\n") + kPage));
  EXPECT_FALSE(client().Get(kPagePath));
}

TEST_F(ServiceFaults, SlowDripTakesItsTimeAndSendsAll) {
  startWith("/pages/welcome.html=slow-drip:100");  // 29 bytes
  const auto begin = Clock::now();
  EXPECT_EQ(client().Get(kPagePath)->body, kPage);
  EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(200));
}

TEST_F(ServiceFaults, SlowDripCanBeASingleByteASecond) {
  folder().write("pages/welcome.html", "ab");
  startWith("/pages/welcome.html=slow-drip:1");
  const auto begin = Clock::now();
  EXPECT_EQ(client().Get(kPagePath)->body, "ab");
  EXPECT_GE(Clock::now() - begin, std::chrono::milliseconds(1000));
}

TEST_F(ServiceFaults, StatusFiveHundredComesWithHtml) {
  startWith("/popup/get_info=status-500");
  const auto answer = getConfig();
  EXPECT_EQ(answer->status, 500);
  EXPECT_EQ(answer->get_header_value("Content-Type"), "text/html");
  EXPECT_NE(answer->body.find("<h1>"), std::string::npos);
}

TEST_F(ServiceFaults, EmptyHasNoBody) {
  startWith("/popup/get_info=empty");
  const auto answer = getConfig();
  EXPECT_EQ(answer->status, 200);
  EXPECT_EQ(answer->get_header_value("Content-Length"), "0");
  EXPECT_EQ(answer->body, "");
}

TEST_F(ServiceFaults, NotJsonIsNoJson) {
  startWith("/popup/get_info=not-json");
  const auto answer = getConfig();
  boost::json::error_code error;
  boost::json::parse(answer->body, error);
  EXPECT_TRUE(error);
  EXPECT_FALSE(answer->body.empty());
}

TEST_F(ServiceFaults, HugeIsFiftyMegabytes) {
  startWith("/popup/get_info=huge");
  std::size_t received = 0;
  const auto answer = client().Get(signedTarget(paramsFor(kConfigPath)),
                                   [&received](const char*, std::size_t length) {
                                     received += length;
                                     return true;
                                   });
  ASSERT_TRUE(answer);
  EXPECT_EQ(received, std::size_t{50} << 20U);
}

TEST_F(ServiceFaults, RedirectLoopNeverEnds) {
  startWith("/popup/get_info=redirect-loop");
  const std::string target = signedTarget(paramsFor(kConfigPath));
  const auto answer = client().Get(target);
  EXPECT_EQ(answer->status, 302);
  EXPECT_EQ(answer->get_header_value("Location"), target);
  client().set_follow_location(true);
  EXPECT_EQ(client().Get(target).error(), httplib::Error::ExceedRedirectCount);
}

TEST_F(ServiceFaults, ChangedAnswersAnotherDocumentFromTheNthRequestOn) {
  folder().write("other.json", R"({"code": 0, "popups": [{"pop_id": 2, "page": "welcome.html"}]})");
  startWith("/popup/get_info=changed:3:other.json");
  const auto popId = [this] { return jsonOf(getConfig()).at("popups").at(0).at("pop_id"); };
  EXPECT_EQ(popId(), 1);
  EXPECT_EQ(popId(), 1);
  EXPECT_EQ(popId(), 2);
  EXPECT_EQ(popId(), 2);
}

TEST_F(ServiceFaults, ChangedAnswersNobodyWhoseSignatureIsWrong) {
  folder().write("other.json", "{}");
  startWith("/popup/get_info=changed:1:other.json");
  EXPECT_EQ(client().Get(kConfigPath)->status, 400);
}

TEST_F(ServiceFaults, SpoilTheAnswerAloneSoThatAReportIsStoredAllTheSame) {
  startWith("/report=drop");
  EXPECT_FALSE(postSigned("/report", {{"pop_id", 1}}));
  EXPECT_EQ(jsonOf(client().Get("/reports")).at("reports").as_array().size(), 1U);
}

TEST_F(ServiceFaults, CanBeSetForAPathThatHasNothing) {
  startWith("/nothing=empty");
  EXPECT_EQ(client().Get("/nothing")->status, 200);
  EXPECT_EQ(client().Get("/something")->status, 404);
}

}  // namespace
}  // namespace zovk
