#include "e2e/navigation/NavigationFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::SizeIs;
using testing::UnorderedElementsAre;

constexpr int kFrames = 300;
constexpr const char* kLine = "an address was not opened: no click or key came before it";

// Addresses outside that a page opens by itself.
using Opening = NavigationFixture;

// Adds frames with addresses of their own, the first ones numbered from `first`.
std::string addFrames(int first, int count) {
  return "for (let i = 0; i < " + std::to_string(count) +
         "; ++i) {"
         "const frame = document.createElement('iframe');"
         "frame.src = 'zovk-test://' + (" +
         std::to_string(first) + " + i); document.body.append(frame); }";
}

TEST_F(Opening, OfManyFramesAtOnceIsOfOneAddress) {
  const std::string own = servePage(addFrames(0, kFrames) + "tellLater();");
  show(own);
  awaitDecided(1 + kFrames);
  awaitOpened(1);
  EXPECT_EQ(pageTells(), own);
  EXPECT_THAT(decided(), SizeIs(1 + kFrames)) << "each is decided on and logged";
  EXPECT_THAT(opener().opened(), ElementsAre("zovk-test://0"));
  EXPECT_TRUE(logged(kLine));
}

TEST_F(Opening, OfManyFramesByAClickIsOfTwoMore) {
  const std::string own = servePage(
      "addEventListener('click', () => { " + addFrames(0, kFrames) + "tellLater(); }); ready();",
      "<iframe src='zovk-test://first' style='position:fixed;width:1px;height:1px'></iframe>");
  show(own);
  awaitOpened(1);
  clickPage();
  awaitOpened(3);
  awaitDecided(3 + kFrames);
  EXPECT_EQ(pageTells(), own + "#ready");
  EXPECT_THAT(opener().opened(),
              UnorderedElementsAre("zovk-test://first", "zovk-test://0", "zovk-test://1"));
}

TEST_F(Opening, IsPossibleAgainForTheNextRun) {
  show(servePage("location.href = 'zovk-test://one'; tellLater();"));
  awaitOpened(1);
  pageTells();
  servePage("location.href = 'zovk-test://two';");
  ZOVKPopup::showPopup("web", 0, recordAnswer());
  awaitOpened(2);
  EXPECT_THAT(opener().opened(), ElementsAre("zovk-test://one", "zovk-test://two"));
}

}  // namespace
}  // namespace zovk
