#include <cmath>
#include <stdexcept>

#include <gtest/gtest.h>

#include "helper/commands/Arguments.h"

namespace zovk::helper {
namespace {

TEST(Arguments, ThatAreNoNumbersAreRefused) {
  // Texts such as 0e999 are read as a value that is not a number.
  const double none = std::nan("");
  const HelperMessage message{
      {"a", none}, {"list", {0, 0, none, 0}}, {"text", "1"}, {"endless", HUGE_VAL}};
  const Arguments arguments(message);
  EXPECT_THROW((void)arguments.number("a"), std::invalid_argument);
  EXPECT_THROW((void)arguments.frame("list"), std::invalid_argument);
  EXPECT_THROW((void)arguments.color("list"), std::invalid_argument);
  EXPECT_THROW((void)arguments.number("text"), std::invalid_argument);
  EXPECT_EQ(arguments.number("endless"), 32767) << "this one is brought into range";
}

}  // namespace
}  // namespace zovk::helper
