#include <string>

#include <gtest/gtest.h>

#include "engine/OnceRecord.h"

namespace zovk {
namespace {

PopupPointer popup(const std::string& sig, std::uint64_t contentType) {
  auto result = std::make_shared<ZOVKPopupModel>();
  result->sig = sig;
  result->content_type = contentType;
  return result;
}

TEST(OnceRecord, KeepsTheKeysOfRemotePagesAndOfAllLocalPopups) {
  const PopupList remote{popup("page", 1), popup("page2", 2), popup("web", 3), popup("odd", 0)};
  const PopupList local{popup("localWeb", 3), popup("localPage", 1)};
  EXPECT_EQ(prunedOnceRecord("page,page2,web,odd,localWeb,localPage,gone", remote, local),
            "page,page2,localWeb,localPage,");
}

TEST(OnceRecord, KeepsOrderAndDuplicates) {
  const PopupList local{popup("a", 3), popup("b", 3)};
  EXPECT_EQ(prunedOnceRecord("b,a,x,b", {}, local), "b,a,b,");
}

TEST(OnceRecord, LosesEmptyPieces) {
  const PopupList local{popup("a", 3), popup("", 3)};
  EXPECT_EQ(prunedOnceRecord(",,a,,", {}, local), "a,");
  EXPECT_EQ(prunedOnceRecord(",", {}, local), "");
  EXPECT_EQ(prunedOnceRecord("", {}, local), "");
}

TEST(OnceRecord, ComparesWholeKeys) {
  const PopupList local{popup("abc", 3)};
  EXPECT_EQ(prunedOnceRecord("ab,abcd,ABC, abc,abc", {}, local), "abc,");
}

TEST(OnceRecord, IsEmptyWithoutPopups) {
  EXPECT_EQ(prunedOnceRecord("a,b", {}, {}), "");
}

TEST(OnceRecord, MayHoldAMillionKeys) {
  std::string record;
  for (int i = 0; i < 1'000'000; ++i) record += "key,dead,";
  const std::string pruned = prunedOnceRecord(record, {popup("key", 1)}, {});
  EXPECT_EQ(pruned.size(), 4'000'000U);
}

TEST(CacheKeepList, NamesThePagesAndTheTwoFixedFiles) {
  EXPECT_EQ(cacheKeepList({}), "ZOVKPopupRemote.config,ZOVKPopupFrequencyOnce.config");
  EXPECT_EQ(cacheKeepList({popup("a", 1), popup("web", 3), popup("b", 2)}),
            "ZOVKPopup_0_1_1_a.html,ZOVKPopup_0_1_2_b.html,"
            "ZOVKPopupRemote.config,ZOVKPopupFrequencyOnce.config");
}

}  // namespace
}  // namespace zovk
