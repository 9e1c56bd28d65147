#include <functional>
#include <stdexcept>

#include <boost/json/parse.hpp>
#include <gmock/gmock.h>

#include "protocol/MessageReader.h"

namespace zovk {
namespace {

using testing::ElementsAre;

/// Returns what the reader throws for that JSON as the member "it", or an empty text.
std::string refusal(const char* json, const std::function<void(const MessageReader&)>& read) {
  HelperMessage message;
  if (json != nullptr) message["it"] = boost::json::parse(json);
  try {
    read(MessageReader(message));
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
  return "";
}

TEST(MessageReader, ReadsEveryKindOfMember) {
  const HelperMessage message = boost::json::parse(R"({"type": "t", "id": 7, "ids": [1, 2],
      "flag": true, "whole": 0, "number": -1.5, "numbers": [1, 2.5], "text": "a\u0000b",
      "texts": ["x", ""]})")
                                    .as_object();
  const MessageReader reader(message);
  EXPECT_EQ(reader.id("id"), 7);
  EXPECT_THAT(reader.ids("ids"), ElementsAre(1, 2));
  EXPECT_TRUE(reader.flag("flag"));
  EXPECT_EQ(reader.wholeNumber("whole"), 0);
  EXPECT_EQ(reader.number("number"), -1.5);
  EXPECT_THAT(reader.numbers("numbers", 2), ElementsAre(1, 2.5));
  EXPECT_EQ(reader.text("text"), std::string("a\0b", 3));
  EXPECT_THAT(reader.texts("texts"), ElementsAre("x", ""));
}

TEST(MessageReader, TakesOnlyWholeNumbersAboveZeroForIdentifiers) {
  const auto id = [](const MessageReader& reader) { (void)reader.id("it"); };
  EXPECT_EQ(refusal("9223372036854775807", id), "");
  for (const char* wrong :
       {"0", "-1", "1.5", "1E0", "9223372036854775808", "\"1\"", "null", "{}"}) {
    EXPECT_EQ(refusal(wrong, id), "\"it\" is no identifier") << wrong;
  }
  EXPECT_EQ(refusal(nullptr, id), "\"it\" is missing");
}

TEST(MessageReader, RefusesAListWithOneWrongItem) {
  EXPECT_EQ(refusal("[1, 0]", [](const MessageReader& reader) { (void)reader.ids("it"); }),
            "\"it\" is no identifier");
  EXPECT_EQ(refusal("[\"a\", 1]", [](const MessageReader& reader) { (void)reader.texts("it"); }),
            "\"it\" is no text");
  const auto two = [](const MessageReader& reader) { (void)reader.numbers("it", 2); };
  EXPECT_EQ(refusal("[1, true]", two), "\"it\" is no number");
  EXPECT_EQ(refusal("[1]", two), "\"it\" has the wrong length");
  EXPECT_EQ(refusal("[1, 2, 3]", two), "\"it\" has the wrong length");
  EXPECT_EQ(refusal("1", two), "\"it\" is no list");
}

TEST(MessageReader, RefusesMembersOfAnotherKind) {
  EXPECT_EQ(refusal("1", [](const MessageReader& reader) { (void)reader.flag("it"); }),
            "\"it\" is no boolean");
  EXPECT_EQ(refusal("-1", [](const MessageReader& reader) { (void)reader.wholeNumber("it"); }),
            "\"it\" is no whole number");
  EXPECT_EQ(refusal("1.5", [](const MessageReader& reader) { (void)reader.wholeNumber("it"); }),
            "\"it\" is no whole number");
  EXPECT_EQ(refusal("\"1\"", [](const MessageReader& reader) { (void)reader.number("it"); }),
            "\"it\" is no number");
  EXPECT_EQ(refusal("1", [](const MessageReader& reader) { (void)reader.text("it"); }),
            "\"it\" is no text");
}

TEST(MessageReader, ReadsAFlagThatMayBeMissingButNotAWrongOne) {
  const HelperMessage message{{"no", false}, {"wrong", 1}};
  const MessageReader reader(message);
  EXPECT_TRUE(reader.flagOr("missing", true));
  EXPECT_FALSE(reader.flagOr("missing", false));
  EXPECT_FALSE(reader.flagOr("no", true));
  EXPECT_THROW((void)reader.flagOr("wrong", true), std::invalid_argument);
}

}  // namespace
}  // namespace zovk
