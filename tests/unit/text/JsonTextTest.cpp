#include <limits>

#include "text/JsonText.h"
#include "unit/bridge/BridgeFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

class BridgeText : public BridgeFixture {
 protected:
  std::string compact(const boost::json::value& value) {
    return bridge_->_serializeMessage(value, false).value_or("absent");
  }
  std::string pretty(const char* json) {
    return bridge_->_serializeMessage(boost::json::parse(json), true).value_or("absent");
  }
  /// Nested arrays, `depth` deep.
  static boost::json::value nested(std::size_t depth) {
    boost::json::value value = boost::json::array();
    for (std::size_t i = 1; i < depth; ++i) {
      boost::json::array outer;
      outer.push_back(std::move(value));
      value = std::move(outer);
    }
    return value;
  }
};

TEST_F(BridgeText, EightCharactersAreEscapedForTheScript) {
  EXPECT_EQ(escapedForScript("\\"), "\\\\");
  EXPECT_EQ(escapedForScript("\""), "\\\"");
  EXPECT_EQ(escapedForScript("'"), "\\'");
  EXPECT_EQ(escapedForScript("\n"), "\\n");
  EXPECT_EQ(escapedForScript("\r"), "\\r");
  EXPECT_EQ(escapedForScript("\f"), "\\f");
  EXPECT_EQ(escapedForScript("\u2028"), "\\u2028");
  EXPECT_EQ(escapedForScript("\u2029"), "\\u2029");
}

TEST_F(BridgeText, BackslashesAreDoubledOnce) {
  EXPECT_EQ(escapedForScript("\\\"\\'\\n\n"), "\\\\\\\"\\\\\\'\\\\n\\n");
  EXPECT_EQ(escapedForScript("\\\\"), "\\\\\\\\");
}

TEST_F(BridgeText, EverythingElseStandsAsItIs) {
  for (int c = 0; c < 256; ++c) {
    const std::string text(1, static_cast<char>(c));
    if (std::string("\\\"'\n\r\f").find(text) == std::string::npos) {
      EXPECT_EQ(escapedForScript(text), text) << c;
    }
  }
  const std::string others = "a\t\b\u2027\u202a\u00e9\U0001f600/%@";
  EXPECT_EQ(escapedForScript(others), others);
  EXPECT_EQ(escapedForScript("\xE2\x80"), "\xE2\x80") << "half a line separator";
  EXPECT_EQ(escapedForScript(""), "");
}

TEST_F(BridgeText, ACommandHoldsNoLineEnd) {
  open();
  bridge_->sendData("'\\\n\r\f\u2028\u2029\"", nullptr, std::nullopt);
  // JSON has escaped once what JSON escapes; the script literal escapes that again.
  EXPECT_THAT(scripts(),
              ElementsAre(R"(WebViewJavascriptBridge._handleMessageFromObjC('{\"data\":\"\'\\\\)"
                          R"(\\n\\r\\f\u2028\u2029\\\"\"}');)"));
}

TEST_F(BridgeText, APercentSignInAMessageIsNoPlaceholder) {
  open();
  bridge_->sendData("%@", nullptr, "%s%n");
  EXPECT_THAT(scripts(), ElementsAre(commandFor(R"({"data":"%@","handlerName":"%s%n"})")));
}

TEST_F(BridgeText, NumbersAreWrittenAsPeopleWriteThem) {
  EXPECT_EQ(compact(1.0), "1");
  EXPECT_EQ(compact(1.5), "1.5");
  EXPECT_EQ(compact(0.1), "0.1");
  EXPECT_EQ(compact(-0.25), "-0.25");
  EXPECT_EQ(compact(123456789.0), "123456789");
  EXPECT_EQ(compact(1e300), "1e+300");
  EXPECT_EQ(compact(5e-324), "5e-324");
  EXPECT_EQ(compact(-1.7976931348623157e308), "-1.7976931348623157e+308");
  EXPECT_EQ(compact(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
  EXPECT_EQ(compact(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST_F(BridgeText, CompactTextHasNoBlanks) {
  EXPECT_EQ(compact(boost::json::parse(R"( { "a" : [ 1 , null, true , "x y" ] , "b" : {} } )")),
            R"({"a":[1,null,true,"x y"],"b":{}})");
  EXPECT_EQ(compact("text"), "\"text\"");
  EXPECT_EQ(compact(nullptr), "null");
}

TEST_F(BridgeText, PrettyTextHasALineForEachMember) {
  EXPECT_EQ(pretty(R"({"a":1,"b":[true,{"c":"d"}],"e":{},"f":[]})"),
            "{\n"
            "  \"a\" : 1,\n"
            "  \"b\" : [\n"
            "    true,\n"
            "    {\n"
            "      \"c\" : \"d\"\n"
            "    }\n"
            "  ],\n"
            "  \"e\" : {},\n"
            "  \"f\" : []\n"
            "}");
  EXPECT_EQ(pretty("1.0"), "1");
}

TEST_F(BridgeText, KeysAreEscapedAsValuesAre) {
  EXPECT_EQ(compact(boost::json::parse(R"({"a\"\n\\":"a\"\n\\"})")), R"({"a\"\n\\":"a\"\n\\"})");
}

TEST_F(BridgeText, WhatJsonCannotHoldHasNoText) {
  EXPECT_EQ(compact(std::numeric_limits<double>::quiet_NaN()), "absent");
  EXPECT_EQ(compact({1, {{"a", -std::numeric_limits<double>::infinity()}}}), "absent");
  EXPECT_EQ(compact("\x80"), "absent");
  EXPECT_EQ(compact({{"\xff", 1}}), "absent");
}

TEST_F(BridgeText, DepthIsBoundedBothWays) {
  const std::string deepest = std::string(512, '[') + std::string(512, ']');
  EXPECT_EQ(compact(nested(512)), deepest);
  EXPECT_EQ(compact(nested(513)), "absent");
  EXPECT_TRUE(bridge_->_deserializeMessageJSON(deepest));
  EXPECT_FALSE(bridge_->_deserializeMessageJSON("[" + deepest + "]"));
  EXPECT_FALSE(bridge_->_deserializeMessageJSON(std::string(1'000'000, '[')));
}

TEST_F(BridgeText, FragmentsParseToo) {
  EXPECT_EQ(bridge_->_deserializeMessageJSON("\"a\""), boost::json::value("a"));
  EXPECT_EQ(bridge_->_deserializeMessageJSON(" 5 "), boost::json::value(5));
  EXPECT_EQ(bridge_->_deserializeMessageJSON("null"), boost::json::value(nullptr));
  EXPECT_EQ(bridge_->_deserializeMessageJSON("[1,{}]"), boost::json::parse("[1,{}]"));
}

TEST_F(BridgeText, WhatIsNoJsonGivesNone) {
  for (const std::string text :
       {"", "{", "[1,]", "nul", "'a'", "[1] 2", "\"\xff\"", "\"\\ud800\"", "undefined"}) {
    EXPECT_FALSE(bridge_->_deserializeMessageJSON(text)) << text;
  }
}

}  // namespace
}  // namespace zovk
