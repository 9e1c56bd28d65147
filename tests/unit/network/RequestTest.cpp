#include "fixtures/LogMessages.h"
#include "unit/network/NetworkFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::MatchesRegex;
using ::testing::Pair;
using Request = NetworkFixture;

constexpr const char* kCommon = "game_id=1001&install_id=ABC&os=2&version=1.0.0";
constexpr const char* kGetInfoSig = "2786be89397b59bc737e8ae9ee3b2b40";

TEST_F(Request, SendsASignedGet) {
  get(params("https://s.example", "/popup/get_info"));
  ASSERT_EQ(session().requestCount(), 1U);
  const MemoryRequest sent = session().request(0);
  EXPECT_EQ(sent.kind, MemoryRequest::Kind::kData);
  EXPECT_EQ(sent.method, "GET");
  EXPECT_EQ(sent.url,
            std::string("https://s.example/popup/get_info?") + kCommon + "&sig=" + kGetInfoSig);
  EXPECT_EQ(sent.body, std::nullopt);
  EXPECT_EQ(sent.timeout, std::chrono::seconds(15));
  EXPECT_THAT(results_, IsEmpty());
}

TEST_F(Request, LogsWhatItSendsAndSigns) {
  network().startRequest(0, params("https://s.example", "/popup/get_info"), nullptr);
  EXPECT_THAT(lines(),
              ElementsAre("D startRequest: Start request, type:0, urlStr:https://s.example, "
                          "postInfo:(null), complete:(nil)",
                          std::string("D startRequest: sigSource:/popup/get_info?") + kCommon +
                              "secret\nsig:" + kGetInfoSig));
}

TEST_F(Request, LogsItsBodyAndWhetherItHasACompletion) {
  ZOVKPopupUrlParams withBody = params("https://s.example/100%25s");
  withBody.postInfo = boost::json::object{{"a", "50%s"}};
  network().startRequest(1, withBody, record());
  EXPECT_THAT(lines().front(),
              MatchesRegex("D startRequest: Start request, type:1, "
                           "urlStr:https://s.example/100%25s, postInfo:..a.:.50%s.., "
                           "complete:0x[0-9a-f]+"));
}

TEST_F(Request, SendsTheBodyThatItSigned) {
  ZOVKPopupUrlParams withBody = params("https://s.example/report");
  withBody.postInfo = boost::json::object{{"title", "Hello World"}};
  network().startRequest(ZOVKPopupNetwork::kPost, withBody, record());
  const MemoryRequest sent = session().request(0);
  EXPECT_EQ(sent.method, "POST");
  EXPECT_EQ(sent.body, R"({"title":"HelloWorld"})");
  EXPECT_THAT(sent.url, ::testing::EndsWith("&sig=9a0f5641b755881ccce413dacb3686b9"));
}

TEST_F(Request, SignsTheBodyOfAGetWithoutSendingIt) {
  ZOVKPopupUrlParams withBody = params("https://s.example/report");
  withBody.postInfo = boost::json::object{{"title", "Hello World"}};
  get(withBody);
  const MemoryRequest sent = session().request(0);
  EXPECT_EQ(sent.method, "GET");
  EXPECT_EQ(sent.body, std::nullopt);
  EXPECT_THAT(sent.url, ::testing::EndsWith("&sig=9a0f5641b755881ccce413dacb3686b9"));
}

TEST_F(Request, PostsWithoutABodyWhenThereIsNone) {
  network().startRequest(1, params("https://s.example/report"), nullptr);
  ZOVKPopupUrlParams empty = params("https://s.example/report");
  empty.postInfo.emplace();
  network().startRequest(1, empty, nullptr);
  for (const MemoryRequest& sent : session().requests()) {
    EXPECT_EQ(sent.method, "POST");
    EXPECT_EQ(sent.body, std::nullopt);
  }
  EXPECT_EQ(session().requestCount(), 2U);
  EXPECT_EQ(log().count("[Error] postInfo illegal"), 2U);
  EXPECT_EQ(lines()[2], "E postInfo illegal") << "behind the line about the signature";
}

TEST_F(Request, WhoseBodyCannotBeWrittenSaysThatOnlyAndIsSentWithoutOne) {
  ZOVKPopupUrlParams broken = params("https://s.example/report");
  broken.postInfo = boost::json::object{{"a", "\xff"}};
  network().startRequest(1, broken, nullptr);
  ASSERT_EQ(session().requestCount(), 1U);
  EXPECT_EQ(session().request(0).method, "POST");
  EXPECT_EQ(session().request(0).body, std::nullopt);
  ASSERT_EQ(errorMessages(log()).size(), 1U);
  EXPECT_THAT(errorMessages(log())[0], ::testing::StartsWith("Dict to NSData error:"));
}

TEST_F(Request, OfAnUnknownTypeIsAGet) {
  for (const std::int32_t type : {-1, 2, 7}) {
    ZOVKPopupUrlParams withBody = params("https://s.example/" + std::to_string(type));
    withBody.postInfo = boost::json::object{{"a", 1}};
    network().startRequest(type, withBody, nullptr);
    const auto sent = session().requestsTo("/" + std::to_string(type) + "?");
    ASSERT_EQ(sent.size(), 1U) << type;
    EXPECT_EQ(sent[0].method, "GET") << type;
    EXPECT_EQ(sent[0].body, std::nullopt) << type;
    network().startRequest(type, params("https://s.example/x"), nullptr);
    EXPECT_THAT(errorMessages(log()), IsEmpty()) << "no body is missed";
  }
}

TEST_F(Request, WithoutAnAddressIsAnsweredAtOnceAndNotSent) {
  get(params(""));
  EXPECT_THAT(results_, ElementsAre(Pair(false, std::nullopt)));
  EXPECT_EQ(session().createdCount(), 0U);
  EXPECT_THAT(lines(), ElementsAre(MatchesRegex("D startRequest: Start request, type:0, urlStr:, "
                                                "postInfo:.null., complete:0x[0-9a-f]+"),
                                   "E Url illegal"));
  settle();
  EXPECT_EQ(results_.size(), 1U);
}

TEST_F(Request, WithoutAnAddressAndACompletionIsSentAllTheSame) {
  network().startRequest(0, params("", "/x"), nullptr);
  ASSERT_EQ(session().requestCount(), 1U);
  EXPECT_THAT(session().request(0).url, ::testing::StartsWith("/x?game_id=1001&"));
  session().deliver();
  EXPECT_EQ(lines()[1], "E Url illegal");
  EXPECT_EQ(lines().back(), "D startRequest: Callback is Null");
}

TEST_F(Request, GivesTheBodyOfTheAnswerOnce) {
  get(params("https://s.example/x"));
  log().clear();
  session().answer(0, 200, "{}");
  session().deliver();
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(true, "{}")));
  EXPECT_THAT(lines(), ElementsAre("D startRequest: Request url:" + session().request(0).url +
                                   ", finished, data length:2"));
}

TEST_F(Request, CountsAnyAnswerAsASuccess) {
  for (const int status : {204, 301, 404, 500, 503}) {
    results_.clear();
    auto request = std::make_shared<ZOVKPopupNetwork>(session());
    request->startRequest(0, params("https://s.example/x"), record());
    session().answer("x", status, "<html>wrong</html>");
    session().deliver();
    EXPECT_THAT(results_, ElementsAre(Pair(true, "<html>wrong</html>"))) << status;
  }
}

TEST_F(Request, GivesAnEmptyBodyAsItIs) {
  get(params("https://s.example/x"));
  session().answer(0, 200, "");
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(true, "")));
}

TEST_F(Request, FailsWithATransportError) {
  get(params("https://s.example/x"));
  log().clear();
  session().fail(0, "timed out: 100%s");
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(false, std::nullopt)));
  EXPECT_THAT(lines(), ElementsAre("E Request url:" + session().request(0).url +
                                   ", error:timed out: 100%s"));
}

TEST_F(Request, NamesTheAddressThatAnswered) {
  get(params("https://s.example/x"));
  log().clear();
  session().answer(0, MemoryAnswer{200, "abc", std::nullopt, "https://moved.example/y"});
  session().deliver();
  EXPECT_THAT(lines(), ElementsAre("D startRequest: Request url:https://moved.example/y, "
                                   "finished, data length:3"));
}

TEST_F(Request, WithoutACompletionSaysSo) {
  network().startRequest(0, params("https://s.example/x"), nullptr);
  session().answer(0, 200, "abc");
  session().deliver();
  EXPECT_EQ(lines().back(), "D startRequest: Callback is Null");
}

TEST_F(Request, ToAnAddressThatCannotBeParsedFails) {
  ZOVKPopupUrlParams odd = params("https://s.example/x");
  odd.gameID = "has a blank";
  get(odd);
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(false, std::nullopt)));
}

TEST_F(Request, ToAnAddressThatCannotBeReadIsNotSentAndFails) {
  for (const char* url : {"https://s.example/a b", "https://[s.example/a", "s.example/a",
                          "ftp://s.example/a", "https://s.example/a%00b"}) {
    results_.clear();
    log().clear();
    auto request = std::make_shared<ZOVKPopupNetwork>(session());
    request->startRequest(0, params(url), record());
    EXPECT_THAT(results_, IsEmpty()) << "not before the session's thread says so";
    session().deliver();
    EXPECT_THAT(results_, ElementsAre(Pair(false, std::nullopt))) << url;
    EXPECT_THAT(errorMessages(log()),
                ElementsAre(AllOf(::testing::StartsWith(std::string("Request url:") + url),
                                  ::testing::HasSubstr(", error:unusable address"))));
  }
}

TEST_F(Request, KeepsItsObjectUntilItsCompletionHasRun) {
  const std::weak_ptr<ZOVKPopupNetwork> weak = network_;
  get(params("https://s.example/x"));
  network_.reset();
  EXPECT_FALSE(weak.expired());
  session().answer(0, 200, "abc");
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(true, "abc")));
  EXPECT_TRUE(weak.expired());
}

TEST_F(Request, ForgetsItsCompletionWhenItHasRun) {
  const auto held = std::make_shared<int>(0);
  network().startRequest(0, params("https://s.example/x"),
                         [held](bool, const std::optional<std::string>&) {});
  EXPECT_GT(held.use_count(), 1);
  session().answer(0, 200, "abc");
  session().deliver();
  EXPECT_EQ(held.use_count(), 1);
}

TEST_F(Request, WithoutACompletionLeavesThatOfAnEarlierCallWaiting) {
  get(params("https://s.example/first"));
  network().startRequest(0, params("https://s.example/second"), nullptr);
  session().answer("second", 200, "2");
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(true, "2"))) << "the first answer is the completion's";
  session().answer("first", 200, "1");
  session().deliver();
  EXPECT_EQ(results_.size(), 1U);
  EXPECT_EQ(lines().back(), "D startRequest: Callback is Null");
}

TEST_F(Request, WithACompletionTakesThePlaceOfAnEarlierOne) {
  network().startRequest(0, params("https://s.example/first"),
                         [](bool, const std::optional<std::string>&) { FAIL(); });
  get(params("https://s.example/second"));
  session().answer("first", 200, "1");
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(true, "1")));
}

TEST_F(Request, MayStartAnotherFromItsCompletion) {
  network().startRequest(0, params("https://s.example/first"),
                         [this](bool, const std::optional<std::string>&) {
                           network().startRequest(0, params("https://s.example/second"), record());
                         });
  session().answer("first", 200, "1");
  session().deliver();
  session().answer("second", 200, "2");
  session().deliver();
  EXPECT_THAT(results_, ElementsAre(Pair(true, "2")));
}

}  // namespace
}  // namespace zovk
