#include <string>

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include "text/JsonSize.h"

namespace zovk {
namespace {

std::size_t valuesOf(std::string_view text) {
  JsonSize size;
  size.add(text);
  return size.values();
}

std::size_t longestTextOf(std::string_view text) {
  JsonSize size;
  size.add(text);
  return size.longestText();
}

std::size_t parsedValues(const boost::json::value& value) {
  std::size_t count = 1;
  if (const auto* array = value.if_array()) {
    for (const auto& element : *array) count += parsedValues(element);
  }
  if (const auto* object = value.if_object()) {
    for (const auto& member : *object) count += parsedValues(member.value());
  }
  return count;
}

TEST(JsonSize, CountsTheValuesThatAParserMakes) {
  for (const std::string text :
       {"1", "[]", "{}", "[1]", "[[],{}]", R"({"a":1,"b":[1,2,{"c":null}]})", R"(["a,b[c{d",2])",
        R"(["\"[,",1])", R"(["\\",[1,2]])", R"({"[":"]",",":"{"})"}) {
    EXPECT_EQ(valuesOf(text), parsedValues(boost::json::parse(text))) << text;
  }
}

TEST(JsonSize, IsTheSameHoweverTheTextIsCut) {
  const std::string text = R"({"a\"b\\":[1,"x,\\",{"c":[]}],"d":[[1]]})";
  for (std::size_t cut = 0; cut <= text.size(); ++cut) {
    JsonSize size;
    size.add(text.substr(0, cut));
    size.add(text.substr(cut));
    EXPECT_EQ(size.values(), parsedValues(boost::json::parse(text))) << cut;
    EXPECT_EQ(size.longestText(), 6U) << cut;
  }
}

TEST(JsonSize, TellsTheBytesOfTheLongestTextOrKeyAsItIsWritten) {
  EXPECT_EQ(longestTextOf("[123456]"), 0U);
  EXPECT_EQ(longestTextOf(R"(["a","bcd","ef"])"), 3U);
  EXPECT_EQ(longestTextOf(R"({"long":"e"})"), 4U);
  EXPECT_EQ(longestTextOf(R"(["\\"])"), 2U);
  EXPECT_EQ(longestTextOf(R"(["\"a"])"), 3U);
  EXPECT_EQ(longestTextOf("\"no end"), 6U);
}

TEST(JsonSize, GrowsWithWorkThatLeadsToNothing) {
  EXPECT_EQ(valuesOf("[[[["), 4U);
  EXPECT_EQ(valuesOf(",,,"), 4U);
  EXPECT_EQ(valuesOf(""), 1U);
}

}  // namespace
}  // namespace zovk
