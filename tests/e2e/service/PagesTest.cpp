#include "e2e/service/ServiceFixture.h"
#include "text/Md5.h"

namespace zovk {
namespace {

class ServicePages : public ServiceFixture {
 protected:
  httplib::Result getPage(const httplib::Headers& headers = {}) {
    return client().Get("/pages/welcome.html", headers);
  }
};

TEST_F(ServicePages, ComeWithTheirValidators) {
  start();
  const auto page = getPage();
  ASSERT_TRUE(page);
  EXPECT_EQ(page->status, 200);
  EXPECT_EQ(page->body, kPage);
  EXPECT_EQ(page->get_header_value("ETag"), '"' + md5Hex(kPage) + '"');
  EXPECT_FALSE(page->get_header_value("Last-Modified").empty());
  EXPECT_EQ(page->get_header_value("Content-Type"), "text/html; charset=utf-8");
}

TEST_F(ServicePages, AreNotSentAgainWhileTheTagHolds) {
  start();
  const std::string tag = getPage()->get_header_value("ETag");
  for (const std::string& list : {tag, "\"other\", W/" + tag, std::string("*")}) {
    const auto again = getPage({{"If-None-Match", list}});
    ASSERT_TRUE(again) << list;
    EXPECT_EQ(again->status, 304) << list;
    EXPECT_TRUE(again->body.empty());
    EXPECT_EQ(again->get_header_value("ETag"), tag);
  }
  EXPECT_EQ(getPage({{"If-None-Match", "\"other\""}})->status, 200);
  folder().write("pages/welcome.html", "changed");
  EXPECT_EQ(getPage({{"If-None-Match", tag}})->body, "changed");
}

TEST_F(ServicePages, AreNotSentAgainWhileTheDateHolds) {
  start();
  const std::string date = getPage()->get_header_value("Last-Modified");
  EXPECT_EQ(getPage({{"If-Modified-Since", date}})->status, 304);
  EXPECT_EQ(getPage({{"If-Modified-Since", "Sun, 06 Nov 1994 08:49:37 GMT"}})->status, 200);
  EXPECT_EQ(getPage({{"If-Modified-Since", "yesterday"}})->status, 200);
}

TEST_F(ServicePages, AreJudgedByTheTagAloneWhenThereIsOne) {
  start();
  const std::string date = getPage()->get_header_value("Last-Modified");
  EXPECT_EQ(getPage({{"If-None-Match", "\"other\""}, {"If-Modified-Since", date}})->status, 200);
}

TEST_F(ServicePages, AreSentAsTheyAreToClientsThatOfferCompression) {
  start();
  client().set_decompress(false);
  const auto page = getPage({{"Accept-Encoding", "gzip, br"}});
  EXPECT_EQ(page->body, kPage);
}

TEST_F(ServicePages, NothingOutsideTheirFolderIsServed) {
  folder().write("pages/.hidden", "x");
  start();
  for (const char* path : {"/pages/gone.html", "/pages/..%2Fgames.json", "/pages/../games.json",
                           "/pages/..", "/pages/.hidden", "/pages/%2E%2E%5Cgames.json",
                           "/pages/welcome.html%00", "/pages/", "/games.json"}) {
    const auto answer = client().Get(path);
    ASSERT_TRUE(answer) << path;
    EXPECT_EQ(answer->status, 404) << path;
  }
}

}  // namespace
}  // namespace zovk
