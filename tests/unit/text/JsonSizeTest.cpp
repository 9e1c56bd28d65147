#include <string>

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include "text/JsonSize.h"

namespace zovk {
namespace {

std::size_t valuesOf(std::string_view text) {
  JsonValueCount count;
  count.add(text);
  return count.values();
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

TEST(JsonValueCount, IsThatOfAParser) {
  for (const std::string text :
       {"1", "[]", "{}", "[1]", "[[],{}]", R"({"a":1,"b":[1,2,{"c":null}]})", R"(["a,b[c{d",2])",
        R"(["\"[,",1])", R"(["\\",[1,2]])", R"({"[":"]",",":"{"})"}) {
    EXPECT_EQ(valuesOf(text), parsedValues(boost::json::parse(text))) << text;
  }
}

TEST(JsonValueCount, IsTheSameHoweverTheTextIsCut) {
  const std::string text = R"({"a\"b\\":[1,"x,\\",{"c":[]}],"d":[[1]]})";
  for (std::size_t cut = 0; cut <= text.size(); ++cut) {
    JsonValueCount count;
    count.add(text.substr(0, cut));
    count.add(text.substr(cut));
    EXPECT_EQ(count.values(), parsedValues(boost::json::parse(text))) << cut;
  }
}

TEST(JsonValueCount, GrowsWithWorkThatLeadsToNothing) {
  EXPECT_EQ(valuesOf("[[[["), 4U);
  EXPECT_EQ(valuesOf(",,,"), 4U);
  EXPECT_EQ(valuesOf(""), 1U);
}

}  // namespace
}  // namespace zovk
