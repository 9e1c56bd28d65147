#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>

#include "engine/ConditionAnswer.h"
#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ConditionAnswer = EngineFixture;

TEST(ConditionAnswerReading, GoesByTheIntegerValueOfNeedPopup) {
  const std::vector<std::pair<std::string, bool>> answers = {{R"({"need_popup":1})", true},
                                                             {R"({"need_popup":"1"})", true},
                                                             {R"({"need_popup":true})", true},
                                                             {R"({"need_popup":1.9})", true},
                                                             {R"({"need_popup":" 1x"})", true},
                                                             {R"({"need_popup":0})", false},
                                                             {R"({"need_popup":2})", false},
                                                             {R"({"need_popup":-1})", false},
                                                             {R"({"need_popup":false})", false},
                                                             {R"({"need_popup":"yes"})", false},
                                                             {R"({"need_popup":null})", false},
                                                             {R"({"need_popup":[1]})", false},
                                                             {R"({"need_popup":{}})", false},
                                                             {"{}", false},
                                                             {"[1]", false},
                                                             {"1", false},
                                                             {"null", false},
                                                             {R"("need_popup")", false}};
  for (const auto& [text, wanted] : answers) {
    EXPECT_EQ(wantedPopupExtra(boost::json::parse(text)).has_value(), wanted) << text;
  }
}

TEST(ConditionAnswerReading, GivesTheExtraObjectOrAnEmptyOne) {
  const std::vector<std::pair<std::string, std::string>> answers = {
      {R"({"need_popup":1,"extra":{"a":1,"b":{"c":"d"}}})", R"({"a":1,"b":{"c":"d"}})"},
      {R"({"need_popup":1,"extra":{}})", "{}"},
      {R"({"need_popup":1,"extra":[1]})", "{}"},
      {R"({"need_popup":1,"extra":"a"})", "{}"},
      {R"({"need_popup":1,"extra":null})", "{}"},
      {R"({"need_popup":1})", "{}"}};
  for (const auto& [text, extra] : answers) {
    EXPECT_EQ(boost::json::serialize(wantedPopupExtra(boost::json::parse(text)).value()), extra);
  }
}

TEST_F(ConditionAnswer, WithoutBytesIsNoAndIsNotLogged) {
  engine();
  log().clear();
  EXPECT_FALSE(engine().parseConditionPopupResp(std::nullopt, nullptr));
  EXPECT_FALSE(engine().parseConditionPopupResp("", nullptr));
  EXPECT_TRUE(log().lines().empty());
}

TEST_F(ConditionAnswer, IsLoggedAsItWasParsed) {
  EXPECT_TRUE(engine().parseConditionPopupResp(R"({ "need_popup" : 1 })", nullptr));
  EXPECT_THAT(debugMessages(log()), Contains(R"(jsonInfo:{"need_popup":1})"));
  EXPECT_FALSE(engine().parseConditionPopupResp("<html>", nullptr));
  EXPECT_THAT(debugMessages(log()), Contains("jsonInfo:(null)"));
}

TEST_F(ConditionAnswer, CopiesTheExtraValuesOverTheGivenOnes) {
  boost::json::object extra{{"a", "old"}, {"kept", 1}};
  EXPECT_TRUE(
      engine().parseConditionPopupResp(R"({"need_popup":1,"extra":{"a":"new","b":2}})", &extra));
  EXPECT_EQ(boost::json::serialize(extra), R"({"a":"new","kept":1,"b":2})");
}

TEST_F(ConditionAnswer, MayLieFiveHundredAndTwelveLevelsDeep) {
  const auto withExtra = [](std::size_t depth) {
    return R"({"need_popup":1,"extra":{"a":)" + std::string(depth - 2, '[') +
           std::string(depth - 2, ']') + "}}";
  };
  EXPECT_TRUE(engine().parseConditionPopupResp(withExtra(512), nullptr));
  EXPECT_FALSE(engine().parseConditionPopupResp(withExtra(513), nullptr));
}

TEST_F(ConditionAnswer, LeavesTheGivenValuesAloneWhenItIsNo) {
  boost::json::object extra;
  EXPECT_FALSE(engine().parseConditionPopupResp(R"({"need_popup":0,"extra":{"a":1}})", &extra));
  EXPECT_TRUE(extra.empty());
}

}  // namespace
}  // namespace zovk
