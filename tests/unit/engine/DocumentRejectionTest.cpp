#include <boost/json/parse.hpp>

#include "unit/engine/ConfigFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

class DocumentRejection : public ConfigFixture {
 protected:
  DocumentRejection() {
    engine();
    log().clear();
  }
  /// Expects a document to be refused and the caller's list to be left as it was.
  void expectRejected(std::string_view text, std::uint64_t configType = kConfigRemote) {
    PopupList popups = listOf({webPage("old")});
    log().clear();
    EXPECT_FALSE(engine().parseConfigFile(text, configType, &popups)) << text.substr(0, 100);
    EXPECT_EQ(scenesOf(popups), std::vector<std::string>{"old"}) << text.substr(0, 100);
    EXPECT_FALSE(log().contains("Parse config file done"));
  }
};

TEST_F(DocumentRejection, OfNoData) {
  expectRejected("");
  EXPECT_THAT(lines(), ElementsAre("D parseConfigFile: Parse config file, configType:0, file data "
                                   "length:0",
                                   "E fileData NULL"));
  expectRejected({}, kConfigLocal);
  EXPECT_EQ(lines().back(), "E fileData NULL");
}

TEST_F(DocumentRejection, OfWhatIsNoJson) {
  for (const std::string text :
       {" ", "{", "nonsense", R"({"popups":[{"pop_id":1}])", R"({"popups":[{"pop_id":1}]}})",
        "{\"popups\":[{\"scene\":\"\xff\"}]}", "{\"popups\":[{\"pop_id\":NaN}]}",
        "{\"popups\":[{\"pop_id\":01}]}", "<html>404</html>", "%s%n"}) {
    expectRejected(text);
    boost::json::error_code error;
    boost::json::parse(text, error);
    EXPECT_EQ(lines().back(), "E Parse config file error:" + error.message());
    EXPECT_EQ(lines().size(), 2U);
  }
}

TEST_F(DocumentRejection, OfEveryBeginningOfADocument) {
  const std::string whole =
      R"({"code":0,"message":"ok","server_time":1.5,"popups":[{"pop_id":"1","scene":"a\u4e2d"}]})";
  for (std::size_t size = 1; size < whole.size(); ++size) {
    expectRejected(std::string_view(whole).substr(0, size));
  }
}

TEST_F(DocumentRejection, OfBytesBehindTheDocument) {
  expectRejected(std::string("{\"popups\":[{\"pop_id\":1}]}\0", 26));
  expectRejected(R"({"popups":[{"pop_id":1}]} true)");
}

TEST_F(DocumentRejection, OfBottomlessNesting) {
  const std::string deep(100'000, '[');
  expectRejected(deep);
  EXPECT_THAT(lines().back(), StartsWith("E Parse config file error:"));
  expectRejected(deep + std::string(100'000, ']'));
  expectRejected(R"({"popups":[{"pop_id":)" + deep);
  std::string objects;
  for (int i = 0; i < 100'000; ++i) objects += R"({"a":)";
  expectRejected(objects);
}

TEST_F(DocumentRejection, OfWhatIsNoObject) {
  for (const char* text :
       {"[]", "5", "null", "true", R"("text")", R"([{"popups":[{"pop_id":1}]}])"}) {
    for (const std::uint64_t type : {kConfigRemote, kConfigLocal}) {
      expectRejected(text, type);
      EXPECT_EQ(lines().size(), 3U);
      EXPECT_EQ(lines().at(1), std::string("D parseConfigFile: Config file:") + text);
      EXPECT_EQ(lines().back(), "E Parse config file exception:the document is no object");
    }
  }
}

TEST_F(DocumentRejection, OfACodeOtherThanZero) {
  for (const char* code : {"5", "-1", "1.5", "true", R"("7")", "1e300"}) {
    expectRejected(std::string(R"({"code":)") + code +
                   R"(,"message":"no","popups":[{"pop_id":1}]})");
    EXPECT_THAT(lines().back(), StartsWith("D parseConfigFile: code:")) << "nothing after that";
  }
  expectRejected(R"({"code":5,"message":"no"})");
  EXPECT_EQ(lines().back(), "D parseConfigFile: code:5, message:no");
}

TEST_F(DocumentRejection, OfACodeLeavesTheServersTimeAsItWas) {
  engine().parseConfigFile(R"({"server_time":5})", kConfigRemote, nullptr);
  expectRejected(R"({"code":1,"server_time":9,"popups":[{"pop_id":1}]})");
  EXPECT_EQ(engine().serverTime(), 5.0);
}

TEST_F(DocumentRejection, OfAHeadWithoutNumbers) {
  for (const char* head : {R"("code":null)", R"("code":[])", R"("code":{})",
                           R"("server_time":null)", R"("server_time":[1])"}) {
    expectRejected(std::string("{") + head + R"(,"popups":[{"pop_id":1}]})");
    EXPECT_THAT(lines().back(), StartsWith("E Parse config file exception:"));
    EXPECT_FALSE(engine().parseConfigFile(std::string("{") + head + "}", kConfigRemote, nullptr));
  }
}

TEST_F(DocumentRejection, OfMissingOrEmptyPopups) {
  for (const char* text :
       {"{}", R"({"popups":[]})", R"({"popups":null})", R"({"popups":{}})", R"({"popups":5})",
        R"({"popups":"[]"})", R"({"Popups":[{"a":1}]})", R"({"popups":{"0":{"pop_id":1}}})"}) {
    for (const std::uint64_t type : {kConfigRemote, kConfigLocal}) {
      expectRejected(text, type);
      EXPECT_EQ(lines().back(), "E No Popups or Popups type error");
    }
  }
}

TEST_F(DocumentRejection, BehindTheHeadKeepsTheServersTime) {
  expectRejected(R"({"server_time":5,"popups":[]})");
  EXPECT_EQ(engine().serverTime(), 5.0);
  expectRejected(R"({"server_time":6,"popups":[{"pop_id":null}]})");
  EXPECT_EQ(engine().serverTime(), 6.0);
}

TEST_F(DocumentRejection, LogsMessagesOfEveryType) {
  engine().parseConfigFile(R"({"code":5,"message":{"a":"100%s"}})", kConfigRemote, nullptr);
  EXPECT_EQ(lines().back(), R"(D parseConfigFile: code:5, message:{"a":"100%s"})");
  engine().parseConfigFile(R"({"code":5,"message":null})", kConfigRemote, nullptr);
  EXPECT_EQ(lines().back(), "D parseConfigFile: code:5, message:null");
}

}  // namespace
}  // namespace zovk
