#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include "zovkpopup/platform/Bundles.h"

namespace zovk {
namespace {

bool valueOf(const std::string& json) {
  return boolValue(boost::json::parse(R"({"key":)" + json + "}").as_object(), "key");
}

TEST(BoolValue, OfABooleanIsItself) {
  EXPECT_TRUE(valueOf("true"));
  EXPECT_FALSE(valueOf("false"));
}

TEST(BoolValue, OfANumberIsWhetherItIsNotZero) {
  for (const char* number : {"1", "-1", "0.5", "18446744073709551615"}) {
    EXPECT_TRUE(valueOf(number)) << number;
  }
  for (const char* number : {"0", "0.0", "-0.0"}) EXPECT_FALSE(valueOf(number)) << number;
}

TEST(BoolValue, OfATextGoesByItsBeginning) {
  for (const char* text : {"YES", "yes", "y", "True", "t", "1", "007", "+2", "-3", "  4", "9x"}) {
    EXPECT_TRUE(valueOf('"' + std::string(text) + '"')) << text;
  }
  for (const char* text : {"", "NO", "no", "false", "0", "000", "+0", " ", "x1", "on", "- 1"}) {
    EXPECT_FALSE(valueOf('"' + std::string(text) + '"')) << text;
  }
}

TEST(BoolValue, OfAnythingElseIsFalse) {
  for (const char* value : {"null", "[1]", R"({"a":1})", "[]"})
    EXPECT_FALSE(valueOf(value)) << value;
}

TEST(BoolValue, OfAMissingKeyIsFalse) {
  EXPECT_FALSE(boolValue({}, "key"));
}

}  // namespace
}  // namespace zovk
