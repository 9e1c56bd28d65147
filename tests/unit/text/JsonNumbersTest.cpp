#include <limits>
#include <stdexcept>

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

#include "text/JsonNumbers.h"

namespace zovk {
namespace {

constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSmallest = std::numeric_limits<std::int32_t>::min();

std::int32_t intOf(const char* json) {
  return intValue(boost::json::parse(json));
}
double doubleOf(const char* json) {
  return doubleValue(boost::json::parse(json));
}

TEST(IntegerOfJson, CutsNumbersTowardsZero) {
  EXPECT_EQ(intOf("2"), 2);
  EXPECT_EQ(intOf("2.9"), 2);
  EXPECT_EQ(intOf("-2.9"), -2);
  EXPECT_EQ(intOf("-0.9"), 0);
  EXPECT_EQ(intOf("1e3"), 1000);
}

TEST(IntegerOfJson, HoldsNumbersToTheRange) {
  EXPECT_EQ(intOf("2147483647"), kLargest);
  EXPECT_EQ(intOf("2147483648"), kLargest);
  EXPECT_EQ(intOf("2147483647.9"), kLargest);
  EXPECT_EQ(intOf("-2147483648"), kSmallest);
  EXPECT_EQ(intOf("-2147483649"), kSmallest);
  EXPECT_EQ(intOf("9223372036854775807"), kLargest);
  EXPECT_EQ(intOf("18446744073709551615"), kLargest);
  EXPECT_EQ(intOf("1e300"), kLargest);
  EXPECT_EQ(intOf("-1e300"), kSmallest);
}

TEST(IntegerOfJson, IsOneOrZeroForTruthValues) {
  EXPECT_EQ(intOf("true"), 1);
  EXPECT_EQ(intOf("false"), 0);
}

TEST(IntegerOfJson, ReadsTheDigitsAtTheStartOfAText) {
  EXPECT_EQ(intOf(R"("2")"), 2);
  EXPECT_EQ(intOf(R"("2.9")"), 2);
  EXPECT_EQ(intOf(R"(" \t\n 12abc")"), 12);
  EXPECT_EQ(intOf(R"("-7")"), -7);
  EXPECT_EQ(intOf(R"("+7")"), 7);
  EXPECT_EQ(intOf(R"("007")"), 7);
  EXPECT_EQ(intOf(R"("1e3")"), 1);
  EXPECT_EQ(intOf(R"("0x10")"), 0);
}

TEST(IntegerOfJson, IsZeroForATextWithoutDigits) {
  for (const char* text : {R"("")", R"(" ")", R"("abc")", R"("-")", R"("+")", R"("+-5")",
                           R"("-+5")", R"("- 5")", R"("nan")", R"("inf")", R"(".5")", R"("%d")"}) {
    EXPECT_EQ(intOf(text), 0) << text;
  }
}

TEST(IntegerOfJson, HoldsTextsToTheRange) {
  EXPECT_EQ(intOf(R"("2147483648")"), kLargest);
  EXPECT_EQ(intOf(R"("-2147483649")"), kSmallest);
  EXPECT_EQ(intOf(R"("99999999999999999999999999")"), kLargest);
  EXPECT_EQ(intOf(R"("-99999999999999999999999999x")"), kSmallest);
}

TEST(IntegerOfJson, IsRefusedForWhatIsNoNumber) {
  for (const char* json : {"null", "[]", "[1]", "{}", R"({"a":1})"}) {
    EXPECT_THROW(intOf(json), std::invalid_argument) << json;
  }
}

TEST(DoubleOfJson, KeepsTheFraction) {
  EXPECT_EQ(doubleOf("1700000000.25"), 1700000000.25);
  EXPECT_EQ(doubleOf("-3"), -3.0);
  EXPECT_EQ(doubleOf("18446744073709551615"), 18446744073709551616.0);
  EXPECT_EQ(doubleOf("true"), 1.0);
  EXPECT_EQ(doubleOf("false"), 0.0);
}

TEST(DoubleOfJson, ReadsTheNumberAtTheStartOfAText) {
  EXPECT_EQ(doubleOf(R"("1700000000.25")"), 1700000000.25);
  EXPECT_EQ(doubleOf(R"(" +1.5e2 seconds")"), 150.0);
  EXPECT_EQ(doubleOf(R"("-0.5")"), -0.5);
  EXPECT_EQ(doubleOf(R"(".5")"), 0.5);
  EXPECT_EQ(doubleOf(R"("1e400")"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(doubleOf(R"("-1e400")"), -std::numeric_limits<double>::infinity());
}

TEST(DoubleOfJson, IsZeroForATextWithoutDigits) {
  for (const char* text : {R"("")", R"("abc")", R"("-")", R"("+-5")", R"("nan")", R"("NaN")",
                           R"("-nan")", R"("inf")", R"("+inf")", R"("-infinity")"}) {
    EXPECT_EQ(doubleOf(text), 0.0) << text;
  }
}

TEST(DoubleOfJson, IsRefusedForWhatIsNoNumber) {
  for (const char* json : {"null", "[]", "{}"}) {
    EXPECT_THROW(doubleOf(json), std::invalid_argument) << json;
  }
}

TEST(NumberText, IsWhatPeopleWrite) {
  EXPECT_EQ(numberText(0.5), "0.5");
  EXPECT_EQ(numberText(100.0), "100");
  EXPECT_EQ(numberText(100000.0), "100000");
  EXPECT_EQ(numberText(-2.25), "-2.25");
  EXPECT_EQ(numberText(0.1), "0.1");
  EXPECT_EQ(numberText(0.0), "0");
  EXPECT_EQ(numberText(-0.0), "-0");
}

TEST(NumberText, HasAllDigitsThatTellItFromItsNeighbours) {
  EXPECT_EQ(numberText(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(numberText(1700000000.25), "1700000000.25");
  EXPECT_EQ(numberText(9007199254740992.0), "9007199254740992");
  EXPECT_EQ(numberText(36893488147419103232.0), "36893488147419103232");
}

TEST(NumberText, HasAnExponentWhereItIsVeryLargeOrVerySmall) {
  EXPECT_EQ(numberText(999999999999999868928.0), "999999999999999868928");
  EXPECT_EQ(numberText(1e21), "1e21") << "a + would be read as a blank";
  EXPECT_EQ(numberText(-1.5e300), "-1.5e300");
  EXPECT_EQ(numberText(0.000001), "0.000001");
  EXPECT_EQ(numberText(0.0000009), "9e-07");
  EXPECT_EQ(numberText(5e-324), "5e-324");
}

}  // namespace
}  // namespace zovk
