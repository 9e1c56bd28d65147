#include <random>
#include <string>

#include <gtest/gtest.h>

#include "storage/RecordText.h"

namespace zovk {
namespace {

std::string anyText(std::mt19937& random, std::size_t longest) {
  std::string text(std::uniform_int_distribution<std::size_t>(0, longest)(random), ' ');
  for (char& sign : text) sign = "ab,"[std::uniform_int_distribution<std::size_t>(0, 2)(random)];
  return text;
}

TEST(RecordText, FindsWhatASearchFinds) {
  std::mt19937 random(1);
  for (int round = 0; round < 20'000; ++round) {
    const std::string text = anyText(random, 12);
    const std::string part = anyText(random, 4);
    EXPECT_EQ(RecordText(text).contains(part), text.find(part) != std::string::npos)
        << text << " / " << part;
  }
}

TEST(RecordText, FindsAKeyWhereverItStands) {
  const RecordText record(",first,second,,third");
  for (const char* key : {"first", "second", "third", "", "eco", "first,second", ",,"}) {
    EXPECT_TRUE(record.contains(key)) << key;
  }
  for (const char* key : {"fourth", "seconds", "third,", "second,third"}) {
    EXPECT_FALSE(record.contains(key)) << key;
  }
}

TEST(RecordText, KeepsItsText) {
  EXPECT_EQ(RecordText(",a,b").text(), ",a,b");
}

}  // namespace
}  // namespace zovk
