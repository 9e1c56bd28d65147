#include <cstdint>
#include <limits>
#include <optional>
#include <string>

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include "logging/LogFormat.h"

namespace zovk {
namespace {

template <class... Values>
std::string expanded(std::string_view format, const Values&... values) {
  LogValues store;
  (addLogValue(store, values), ...);
  return expandLogFormat(format, store);
}

TEST(LogFormat, PutsTextsWhereObjectsStand) {
  EXPECT_EQ(expanded("%@", std::string("text")), "text");
  EXPECT_EQ(expanded("%@", std::string_view("text")), "text");
  EXPECT_EQ(expanded("%@", "text"), "text");
  EXPECT_EQ(expanded("<%@>", ""), "<>");
  EXPECT_EQ(expanded("%@,%@", "a", "b"), "a,b");
  EXPECT_EQ(expanded("%@%@", "a", "b"), "ab");
}

TEST(LogFormat, WritesAnAbsentTextAsNull) {
  EXPECT_EQ(expanded("%@", std::optional<std::string>()), "(null)");
  EXPECT_EQ(expanded("%@", std::optional<std::string>("text")), "text");
}

TEST(LogFormat, WritesTruthValuesAsDigits) {
  EXPECT_EQ(expanded("%d%d", true, false), "10");
}

TEST(LogFormat, WritesNumbersOfEveryWidth) {
  EXPECT_EQ(expanded("%d", std::numeric_limits<std::int32_t>::min()), "-2147483648");
  EXPECT_EQ(expanded("%d", std::numeric_limits<std::int64_t>::max()), "9223372036854775807");
  EXPECT_EQ(expanded("%d", std::size_t{50'000'000'000}), "50000000000");
  EXPECT_EQ(expanded("%d", std::uint8_t{200}), "200");
  EXPECT_EQ(expanded("%f", 1.5), "1.500000");
  EXPECT_EQ(expanded("%.3f", 2.0 / 3), "0.667");
  EXPECT_EQ(expanded("%02x", 10), "0a");
}

TEST(LogFormat, WritesEnumeratorsAsNumbers) {
  enum class Kind : std::int32_t { kOdd = 3 };
  EXPECT_EQ(expanded("%d", Kind::kOdd), "3");
}

TEST(LogFormat, WritesPointersAndTheirAbsence) {
  const int number = 0;
  EXPECT_TRUE(expanded("%p", &number).starts_with("0x"));
  EXPECT_EQ(expanded("%p", static_cast<const void*>(nullptr)), "(nil)");
}

TEST(LogFormat, WritesJson) {
  const auto value = boost::json::parse(R"({"a":[1,null,"%s"]})");
  EXPECT_EQ(expanded("%@", value), R"({"a":[1,null,"%s"]})");
  EXPECT_EQ(expanded("%@", value.as_object()), R"({"a":[1,null,"%s"]})");
}

TEST(LogFormat, WritesDoubledPercentSignsOnce) {
  EXPECT_EQ(expanded("100%%"), "100%");
  EXPECT_EQ(expanded("%%@ %@", "x"), "%@ x");
  EXPECT_EQ(expanded("%%%@%%", "x"), "%x%");
}

TEST(LogFormat, NeverExpandsAValue) {
  for (const char* text : {"%s", "%@", "%%", "%", "%n", "%999999999d", "%1$s", "{}", "{0}"}) {
    EXPECT_EQ(expanded("<%@>", text), "<" + std::string(text) + ">");
    EXPECT_EQ(expanded("<%s>", text), "<" + std::string(text) + ">");
  }
}

TEST(LogFormat, KeepsBytesOfValuesAsTheyAre) {
  const std::string bytes("a\0b\xff\xc3(\n", 7);
  EXPECT_EQ(expanded("%@", bytes), bytes);
}

TEST(LogFormat, ReturnsAFormatThatDoesNotFitItsValuesAsItStands) {
  EXPECT_EQ(expanded("%@"), "%@");
  EXPECT_EQ(expanded("%@ %@ %d", "a", "b"), "%@ %@ %d");
  EXPECT_EQ(expanded("%d", "text"), "%d");
  EXPECT_EQ(expanded("50% of %@", "all"), "50% of %@");
  EXPECT_EQ(expanded("%"), "%");
  EXPECT_EQ(expanded("%@%", "a"), "%@%");
}

TEST(LogFormat, PassesOverValuesThatTheFormatDoesNotName) {
  EXPECT_EQ(expanded("done", "unused", 5), "done");
  EXPECT_EQ(expanded("", "unused"), "");
}

}  // namespace
}  // namespace zovk
