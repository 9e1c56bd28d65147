#include "e2e/service/ServiceFixture.h"
#include "text/Md5.h"

namespace zovk {
namespace {

class ServiceConfig : public ServiceFixture {
 protected:
  boost::json::object firstPopup() {
    const auto answer = getConfig();
    EXPECT_TRUE(answer && answer->status == 200);
    return jsonOf(answer).at("popups").at(0).as_object();
  }
  void offer(const std::string& popup) {
    folder().write("config.json", R"({"code": 0, "popups": [)" + popup + "]}");
  }
};

TEST_F(ServiceConfig, FillsInAddressAndDigestOfAPageFile) {
  start();
  const auto popup = firstPopup();
  EXPECT_EQ(popup.at("uri"), boost::json::string(base() + "/pages/welcome.html"));
  EXPECT_EQ(popup.at("sig"), boost::json::string(md5Hex(kPage)));
  EXPECT_EQ(popup.at("content_type"), 1);
  EXPECT_FALSE(popup.contains("page"));
}

TEST_F(ServiceConfig, PageIsFoundWhereTheDocumentSaysItIs) {
  start();
  const std::string uri(firstPopup().at("uri").as_string());
  const auto page = client().Get(uri.substr(base().size()));
  ASSERT_TRUE(page);
  EXPECT_EQ(page->body, kPage);
}

TEST_F(ServiceConfig, EncodesAPageNameInItsAddress) {
  folder().write("pages/two words.html", "x");
  offer(R"({"page": "two words.html"})");
  start();
  EXPECT_EQ(firstPopup().at("uri"), boost::json::string(base() + "/pages/two%20words.html"));
  EXPECT_EQ(client().Get("/pages/two%20words.html")->body, "x");
}

TEST_F(ServiceConfig, SignsAWebPageByItsAddress) {
  offer(R"({"content_type": 3, "uri": "{{base}}/pages/welcome.html"})");
  start();
  const auto popup = firstPopup();
  EXPECT_EQ(popup.at("sig"), boost::json::string(md5Hex(base() + "/pages/welcome.html")));
}

TEST_F(ServiceConfig, LeavesWhatTheAuthorGave) {
  offer(
      R"({"page": "welcome.html", "sig": "wrong", "uri": "http://other.example/", "content_type": 2})");
  start();
  const auto popup = firstPopup();
  EXPECT_EQ(popup.at("sig"), "wrong");
  EXPECT_EQ(popup.at("uri"), "http://other.example/");
  EXPECT_EQ(popup.at("content_type"), 2);
}

TEST_F(ServiceConfig, PutsAnotherBaseIntoTheDocumentWhenTold) {
  offer(R"({"check_url": "{{base}}/check/a", "report_url": "{{base}}/report"})");
  start({"--base", "http://popups.example"});
  const auto popup = firstPopup();
  EXPECT_EQ(popup.at("check_url"), "http://popups.example/check/a");
  EXPECT_EQ(popup.at("report_url"), "http://popups.example/report");
}

TEST_F(ServiceConfig, ReadsTheDocumentAnewAtEachRequest) {
  start();
  EXPECT_EQ(firstPopup().at("pop_id"), 1);
  offer(R"({"pop_id": 2})");
  EXPECT_EQ(firstPopup().at("pop_id"), 2);
}

TEST_F(ServiceConfig, TellsItsAuthorWhatIsWrong) {
  start();
  folder().write("config.json", "{");
  EXPECT_EQ(getConfig()->status, 500);
  EXPECT_NE(getConfig()->body.find("config.json: not JSON"), std::string::npos);
  offer(R"({"page": "gone.html"})");
  EXPECT_EQ(jsonOf(getConfig()).at("message"), "no page file pages/gone.html");
}

}  // namespace
}  // namespace zovk
