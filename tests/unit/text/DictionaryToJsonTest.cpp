#include <limits>

#include <boost/json/parse.hpp>

#include "text/ZOVKPopupCommonTool.h"
#include "unit/network/NetworkFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;
using DictionaryToJson = NetworkFixture;
using Tool = ZOVKPopupCommonTool;

TEST_F(DictionaryToJson, LeavesBlanksOutAlsoInsideValuesAndKeys) {
  EXPECT_EQ(Tool::dictionaryToData(boost::json::object{{"a", "x y"}}), R"({"a":"xy"})");
  EXPECT_EQ(Tool::dictionaryToJsonString(boost::json::object{{"a", "x y"}}), R"({"a":"xy"})");
  EXPECT_EQ(Tool::dictionaryToJsonString(boost::json::object{{" my key ", "  "}}),
            R"({"mykey":""})");
}

TEST_F(DictionaryToJson, KeepsEscapedLineEndsOfValues) {
  EXPECT_EQ(Tool::dictionaryToJsonString(boost::json::object{{"a", "x\ny\r\tz"}}),
            R"({"a":"x\ny\r\tz"})");
}

TEST_F(DictionaryToJson, GivesNothingForNothing) {
  EXPECT_EQ(Tool::dictionaryToData(std::nullopt), std::nullopt);
  EXPECT_EQ(Tool::dictionaryToData(boost::json::object()), std::nullopt);
  EXPECT_EQ(Tool::dictionaryToJsonString(std::nullopt), "");
  EXPECT_EQ(Tool::dictionaryToJsonString(boost::json::object()), "");
  EXPECT_TRUE(lines().empty());
}

TEST_F(DictionaryToJson, WritesTheSameTextForTheSameDictionary) {
  const auto dictionary =
      boost::json::parse(R"({"z":1,"a":[true,null,{"k":"v"}],"n":-2147483648,"d":0.5})")
          .as_object();
  EXPECT_EQ(Tool::dictionaryToJsonString(dictionary), Tool::dictionaryToJsonString(dictionary));
  EXPECT_EQ(boost::json::parse(Tool::dictionaryToJsonString(dictionary)), dictionary);
  EXPECT_EQ(*Tool::dictionaryToData(dictionary), Tool::dictionaryToJsonString(dictionary));
}

TEST_F(DictionaryToJson, EscapesQuotesAndKeepsOtherScripts) {
  const boost::json::object dictionary{{"a", "\"\\/\xe4\xb8\xad%s"}};
  EXPECT_EQ(boost::json::parse(Tool::dictionaryToJsonString(dictionary)), dictionary);
}

TEST_F(DictionaryToJson, FailsForWhatIsNoText) {
  EXPECT_EQ(Tool::dictionaryToData(boost::json::object{{"a", "\xff"}}), std::nullopt);
  EXPECT_THAT(lines(), ElementsAre(StartsWith("E Dict to NSData error:")));
  EXPECT_EQ(Tool::dictionaryToJsonString(boost::json::object{{"\xc3", 1}}), "");
}

TEST_F(DictionaryToJson, FailsForWhatIsNestedTooDeepToBeReadAgain) {
  const auto nested = [](int depth) {
    boost::json::value inner = 1;
    for (int i = 1; i < depth; ++i)
      inner = i % 2 == 0 ? boost::json::array{inner} : boost::json::value{{"a", inner}};
    return boost::json::object{{"a", inner}};
  };
  EXPECT_TRUE(Tool::dictionaryToData(nested(512)).has_value());
  EXPECT_EQ(Tool::dictionaryToData(nested(513)), std::nullopt);
  EXPECT_THAT(lines(), ElementsAre("E Dict to NSData error:too deep"));
}

TEST_F(DictionaryToJson, FailsForNumbersThatJsonCannotHold) {
  using Limits = std::numeric_limits<double>;
  for (const double number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
    log().clear();
    EXPECT_EQ(Tool::dictionaryToData(boost::json::object{{"a", number}}), std::nullopt);
    EXPECT_THAT(lines(), ElementsAre(StartsWith("E Dict to NSData error:")));
  }
}

TEST_F(DictionaryToJson, WritesLargeDictionaries) {
  const boost::json::object dictionary{{"a", std::string(10'000'000, 'x')}};
  EXPECT_EQ(Tool::dictionaryToJsonString(dictionary).size(), 10'000'008U);
}

}  // namespace
}  // namespace zovk
