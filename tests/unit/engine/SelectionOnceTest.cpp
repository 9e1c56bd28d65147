#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::Contains;

constexpr const char* kRecord = "ZOVKPopupFrequencyOnce.config";

// What has been shown once is not selected again by its scene type.
class SelectionOnce : public EngineFixture {
 protected:
  SelectionOnce() { engine(); }
  bool isValid(const ZOVKPopupModel& popup) {
    return !engine().getValidPopupForSceneType(1, listOf({popup})).empty();
  }
};

TEST_F(SelectionOnce, PassesOverARecordedPageFile) {
  const ZOVKPopupModel popup = pageFile("a");
  EXPECT_TRUE(isValid(popup));
  addCacheFile(kRecord, "other," + popup.sig + ",");
  EXPECT_FALSE(isValid(popup));
  EXPECT_THAT(debugMessages(log()), Contains("Had already Popuped"));
}

TEST_F(SelectionOnce, LooksForTheKeyAnywhereInTheRecord) {
  const ZOVKPopupModel popup = pageFile("a");
  addCacheFile(kRecord, "xx" + popup.sig + "yy");
  EXPECT_FALSE(isValid(popup));
}

TEST_F(SelectionOnce, DoesNotLookAtTheFrequency) {
  ZOVKPopupModel popup = pageFile("a");
  addCacheFile(kRecord, popup.sig);
  for (const std::uint64_t frequency : {0U, 1U, 2U, 3U}) {
    popup.pop_freq = frequency;
    EXPECT_FALSE(isValid(popup)) << frequency;
  }
}

TEST_F(SelectionOnce, ComesBeforeTheDigest) {
  const ZOVKPopupModel popup = pageFile("a");
  addCacheFile(kRecord, popup.sig);
  addCacheFile(popup.getPopupFileName(), "changed");
  EXPECT_FALSE(isValid(popup));
  EXPECT_THAT(debugMessages(log()), Contains("Had already Popuped"));
}

TEST_F(SelectionOnce, LeavesWebPagesAlone) {
  ZOVKPopupModel popup = webPage("a");
  popup.pop_freq = 1;
  addCacheFile(kRecord, popup.sig);
  EXPECT_TRUE(isValid(popup));
}

TEST_F(SelectionOnce, DoesNotCountWhenTheHostNamesTheScene) {
  const ZOVKPopupModel popup = pageFile("a");
  addCacheFile(kRecord, popup.sig);
  EXPECT_EQ(engine().getValidPopupForScene("a", listOf({popup})).size(), 1U);
}

TEST_F(SelectionOnce, HoldsFromTheEndOfTheFirstRunOn) {
  ZOVKPopupModel popup = pageFile("a");
  popup.pop_freq = 1;
  engine().setMergePopupArr(listOf({popup}));
  EXPECT_TRUE(engine().havePopup(1));
  engine().showPopup("", 1, recordAnswer());
  settle();
  EXPECT_TRUE(engine().havePopup(1)) << "it is recorded when it ends";
  choose("skip");
  EXPECT_FALSE(engine().havePopup(1));
}

}  // namespace
}  // namespace zovk
