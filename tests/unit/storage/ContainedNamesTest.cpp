#include <chrono>
#include <random>

#include <gmock/gmock.h>

#include "storage/ContainedNames.h"

namespace zovk {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

TEST(ContainedNames, AreThoseBetweenCommasAndThoseInsideOfOthers) {
  const std::vector<std::string> names = {"a.html", "b.html", "x_a.html", "html,x",
                                          "A.html", "x",      "x_a.html,"};
  EXPECT_THAT(containedNames(names, "x_a.html,other.html,x"),
              UnorderedElementsAre("a.html", "x_a.html", "html,x", "x", "x_a.html,"));
}

TEST(ContainedNames, AreFoundAtBothEndsOfTheText) {
  const std::vector<std::string> names = {"ab", "yz", "abxyz", "abxyz1", "bx"};
  EXPECT_THAT(containedNames(names, "abxyz"), UnorderedElementsAre("ab", "yz", "abxyz", "bx"));
}

TEST(ContainedNames, AreNoneInNoText) {
  EXPECT_THAT(containedNames({"a", "b"}, ""), IsEmpty());
  EXPECT_THAT(containedNames({}, "a,b"), IsEmpty());
}

TEST(ContainedNames, MayHoldAnyBytes) {
  const std::string zero("a\0b", 3);
  EXPECT_THAT(containedNames({zero, "\xff\xfe", "\xfe\xff"}, "x" + zero + "y\xff\xfe"),
              UnorderedElementsAre(zero, "\xff\xfe"));
}

// Short names of two letters occur in a text of two letters in every way there is.
TEST(ContainedNames, AreJustThoseThatASearchFinds) {
  std::mt19937 random(20250101);
  const auto anyText = [&](std::size_t most) {
    std::string text(std::uniform_int_distribution<std::size_t>(1, most)(random), 'a');
    for (char& c : text) c = "ab,"[std::uniform_int_distribution<int>(0, 2)(random)];
    return text;
  };
  int found = 0;
  for (int round = 0; round < 300; ++round) {
    const std::string text = anyText(40);
    std::vector<std::string> names;
    for (int i = 0; i < 20; ++i) names.push_back(anyText(6));
    const auto contained = containedNames(names, text);
    for (const std::string& name : names) {
      const bool here = text.find(name) != std::string::npos;
      found += here ? 1 : 0;
      ASSERT_EQ(contained.contains(name), here) << name << " in " << text;
    }
  }
  EXPECT_GT(found, 500);
}

// Every name searched by itself would compare a hundred thousand times a megabyte: minutes.
TEST(ContainedNames, OfAHundredThousandFilesTakeNoLongTime) {
  std::string keepList;
  std::vector<std::string> names;
  for (int i = 0; i < 100'000; ++i) {
    const std::string digits = std::to_string(1'000'000 + i);
    names.push_back("ZOVKPopup_1_1_1_0123456789abcdef0123456" + digits + ".html");
    if (i % 10 == 0) keepList += "ZOVKPopup_1_1_1_fedcba98765432100123456" + digits + ".html,";
  }
  keepList += names[5];
  const auto start = std::chrono::steady_clock::now();
  EXPECT_THAT(containedNames(names, keepList), UnorderedElementsAre(names[5]));
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(10));
}

}  // namespace
}  // namespace zovk
