#include <string>

#include <gtest/gtest.h>

#include "text/JsonRead.h"

namespace zovk {
namespace {

boost::json::error_code errorOf(std::string_view text) {
  boost::json::error_code error;
  readJson(text, error);
  return error;
}

TEST(JsonRead, GoesDownFiveHundredAndTwelveLevelsAndNotOneMore) {
  for (const auto& [open, close] : {std::pair("[", "]"), std::pair("{\"a\":", "}")}) {
    std::string text = "1";
    for (int i = 0; i < 512; ++i) text = open + text + close;
    EXPECT_FALSE(errorOf(text)) << open;
    EXPECT_EQ(errorOf(open + text + close), boost::json::error::too_deep) << open;
  }
}

TEST(JsonRead, SaysWhatIsWrong) {
  EXPECT_TRUE(errorOf(""));
  EXPECT_TRUE(errorOf("{]"));
  EXPECT_EQ(errorOf("{}x"), boost::json::error::extra_data);
}

TEST(JsonRead, TakesOneByteOrderMarkAway) {
  EXPECT_EQ(withoutByteOrderMark("\xEF\xBB\xBF{}"), "{}");
  EXPECT_EQ(withoutByteOrderMark("\xEF\xBB\xBF\xEF\xBB\xBF{}"), "\xEF\xBB\xBF{}");
  EXPECT_EQ(withoutByteOrderMark("\xEF\xBB"), "\xEF\xBB");
  EXPECT_EQ(withoutByteOrderMark(" \xEF\xBB\xBF"), " \xEF\xBB\xBF");
  EXPECT_EQ(withoutByteOrderMark(""), "");
}

}  // namespace
}  // namespace zovk
