#include <gmock/gmock.h>

#include "fixtures/EngineFixture.h"
#include "fixtures/LineWatch.h"
#include "fixtures/LogLines.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::StartsWith;

// An entry is put into the queue.
class DisplayCache : public EngineFixture {
 protected:
  DisplayCache() {
    engine();
    log().clear();
  }
  CallbackPointer recorded() { return std::make_shared<const ZOVKPopupComplete>(recordAnswer()); }
  std::vector<std::string> lines() { return shortLines(log()); }
};

TEST_F(DisplayCache, LogsTheCountAndTheCallback) {
  engine().cachePopup(listOf({webPage("a"), webPage("b"), webPage("c")}), recorded());
  EXPECT_THAT(lines(),
              ElementsAre(StartsWith("D cachePopup: Cache Popup, Popup count:3, complete:0x"),
                          "D cachePopup: Cache callback done"));
}

TEST_F(DisplayCache, LogsMissingPopupsAsAnError) {
  engine().cachePopup({}, recorded());
  EXPECT_THAT(lines(),
              ElementsAre(StartsWith("D cachePopup: Cache Popup, Popup count:0, complete:0x"),
                          "E popupArr is NULL or empty", "D cachePopup: Cache callback done"));
}

TEST_F(DisplayCache, LogsMissingPopupsThenTheMissingCallback) {
  engine().cachePopup({}, nullptr);
  EXPECT_THAT(lines(), ElementsAre("D cachePopup: Cache Popup, Popup count:0, complete:(nil)",
                                   "E popupArr is NULL or empty", "D cachePopup: complete is NULL",
                                   "D cachePopup: Cache callback done"));
  EXPECT_EQ(engine().popupCache().size(), 1U);
}

TEST_F(DisplayCache, HoldsTheEntryWhenItSaysSo) {
  std::vector<std::size_t> sizes;
  const LineWatch steps(memory(), "::cachePopup ",
                        [&] { sizes.push_back(engine().popupCache().size()); });
  engine().cachePopup({}, nullptr);
  EXPECT_THAT(sizes, ElementsAre(0U, 0U, 1U)) << "said first, without a callback, done";
}

TEST_F(DisplayCache, HasThePageMadeOnlyOnceTheWindowIsThere) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  engine().showPopup("lobby", 0, nullptr);
  log().clear();
  settle();
  const auto all = lines();
  EXPECT_EQ(std::vector<std::string>(all.begin(), all.begin() + 5),
            (std::vector<std::string>{
                "D initPopupWindow: Init Popup window", "D showPopup: Start show Popup",
                "D setLoginState: Set state ID1: ID2: ID3:1 ID4: ID5:, ID6:",
                "D showPopup: Popup count:1", "D startCheckKeyWindow: Start check key window"}));
}

}  // namespace
}  // namespace zovk
