#include <boost/json/serialize.hpp>

#include "text/ZOVKPopupCommonTool.h"
#include "unit/network/NetworkFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;
using JsonToDictionary = NetworkFixture;
using Tool = ZOVKPopupCommonTool;

TEST_F(JsonToDictionary, GivesTheObject) {
  const auto parsed = Tool::jsonStringToDictionary(R"( {"a" : 1, "b" : [true] } )");
  ASSERT_TRUE(parsed.has_value());
  EXPECT_EQ(boost::json::serialize(*parsed), R"({"a":1,"b":[true]})");
  EXPECT_TRUE(lines().empty());
}

TEST_F(JsonToDictionary, GivesOtherJsonAsItIs) {
  for (const char* text : {"[1,2]", "5", "true", "null", "\"text\"", "{}", "[]"}) {
    const auto parsed = Tool::jsonStringToDictionary(text);
    ASSERT_TRUE(parsed.has_value()) << text;
    EXPECT_EQ(boost::json::serialize(*parsed), text);
  }
}

TEST_F(JsonToDictionary, GivesNothingForNoTextAndSaysSo) {
  EXPECT_EQ(Tool::jsonStringToDictionary(std::nullopt), std::nullopt);
  EXPECT_THAT(lines(), ElementsAre("D jsonStringToDictionary: jsonString nil to dictionary"));
}

TEST_F(JsonToDictionary, GivesNothingForWhatIsNoJson) {
  for (const std::string text :
       {"", " ", "{", "{\"a\"}", "{a:1}", "{'a':1}", "{\"a\":1,}", "{\"a\":1}x", "nul", "NaN", "01",
        "{\"a\":\"\xff\"}", "\"\\ud800\"", "{\"a\":\"line\nend\"}", "%s%@"}) {
    log().clear();
    EXPECT_EQ(Tool::jsonStringToDictionary(text), std::nullopt) << text;
    EXPECT_THAT(lines(), ElementsAre(StartsWith("E jsonStringToDictionary parse failed: ")));
  }
}

TEST_F(JsonToDictionary, GivesNothingForATextThatEndsInAZeroByte) {
  EXPECT_EQ(Tool::jsonStringToDictionary(std::string("{}\0", 3)), std::nullopt);
}

TEST_F(JsonToDictionary, ReadsDownToFiveHundredAndTwelveLevels) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
  };
  EXPECT_TRUE(Tool::jsonStringToDictionary(nested(512)).has_value());
  EXPECT_EQ(Tool::jsonStringToDictionary(nested(513)), std::nullopt);
  EXPECT_THAT(lines(), ElementsAre("E jsonStringToDictionary parse failed: too deep"));
}

TEST_F(JsonToDictionary, RejectsBottomlessNesting) {
  for (const std::string piece : {"[", "{\"a\":"}) {
    std::string text;
    for (int i = 0; i < 100'000; ++i) text += piece;
    EXPECT_EQ(Tool::jsonStringToDictionary(text), std::nullopt);
  }
  EXPECT_EQ(Tool::jsonStringToDictionary(std::string(100'000, '[') + std::string(100'000, ']')),
            std::nullopt);
}

TEST_F(JsonToDictionary, ReadsAHugeText) {
  const auto parsed =
      Tool::jsonStringToDictionary("{\"a\":\"" + std::string(50'000'000, 'x') + "\"}");
  ASSERT_TRUE(parsed.has_value());
  EXPECT_EQ(parsed->at("a").as_string().size(), 50'000'000U);
}

}  // namespace
}  // namespace zovk
