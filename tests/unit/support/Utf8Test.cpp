#include <string>

#include <gtest/gtest.h>

#include "support/Utf8.h"

namespace zovk {
namespace {

TEST(Utf8, AcceptsWellFormedText) {
  EXPECT_TRUE(isUtf8(""));
  EXPECT_TRUE(isUtf8("plain"));
  EXPECT_TRUE(isUtf8(std::string("a\0b", 3)));
  EXPECT_TRUE(isUtf8("\xc3\xa4\xe4\xb8\xad\xf0\x9f\x98\x80"));
  EXPECT_TRUE(isUtf8("\xef\xbb\xbfmarked"));
  EXPECT_TRUE(isUtf8("\xc2\x80\xdf\xbf\xe0\xa0\x80\xf0\x90\x80\x80")) << "the smallest of a length";
  EXPECT_TRUE(isUtf8("\xed\x9f\xbf\xee\x80\x80\xf4\x8f\xbf\xbf")) << "next to what is no character";
}

TEST(Utf8, RejectsStrayAndMissingBytes) {
  for (const char* text : {"\x80", "\xff", "\xfe", "a\xbf", "\xc3", "\xc3(", "\xe4\xb8",
                           "\xe4\xb8(", "\xf0\x9f\x98", "\xf0(\x98\x80", "ok\xc3"}) {
    EXPECT_FALSE(isUtf8(text)) << ::testing::PrintToString(text);
  }
}

TEST(Utf8, RejectsCharactersWrittenTooLong) {
  for (const char* text : {"\xc0\x80", "\xc1\xbf", "\xe0\x80\x80", "\xe0\x9f\xbf",
                           "\xf0\x8f\xbf\xbf", "\xf8\x88\x80\x80\x80"}) {
    EXPECT_FALSE(isUtf8(text)) << ::testing::PrintToString(text);
  }
}

TEST(Utf8, RejectsHalvesOfPairsAndNumbersThatAreNoCharacters) {
  for (const char* text :
       {"\xed\xa0\x80", "\xed\xbf\xbf", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80"}) {
    EXPECT_FALSE(isUtf8(text)) << ::testing::PrintToString(text);
  }
}

TEST(Utf8, LooksAtEveryByteOfALongText) {
  std::string text(10'000'000, 'x');
  EXPECT_TRUE(isUtf8(text));
  text.back() = '\xff';
  EXPECT_FALSE(isUtf8(text));
}

}  // namespace
}  // namespace zovk
