#include <gtest/gtest.h>

#include "text/ZOVKPopupCommonTool.h"

namespace zovk {
namespace {

TEST(TextDigest, IsEmptyForNoText) {
  EXPECT_EQ(ZOVKPopupCommonTool::getTextMD5(""), "");
  EXPECT_EQ(ZOVKPopupCommonTool::getTextMD5({}), "");
}

TEST(TextDigest, IsInLowerCase) {
  EXPECT_EQ(ZOVKPopupCommonTool::getTextMD5("abc"), "900150983cd24fb0d6963f7d28e17f72");
}

TEST(TextDigest, EndsAtTheFirstZeroByte) {
  EXPECT_EQ(ZOVKPopupCommonTool::getTextMD5(std::string("abc\0def", 7)),
            "900150983cd24fb0d6963f7d28e17f72");
  EXPECT_EQ(ZOVKPopupCommonTool::getTextMD5(std::string("\0def", 4)),
            "d41d8cd98f00b204e9800998ecf8427e");
}

TEST(TextDigest, CoversTheTextsBytes) {
  EXPECT_EQ(ZOVKPopupCommonTool::getTextMD5("\xc3\xa4"), "8419b71c87a225a2c70b50486fbee545");
}

}  // namespace
}  // namespace zovk
