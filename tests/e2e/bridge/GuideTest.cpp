#include <fstream>
#include <iterator>

#include "e2e/bridge/BridgePageFixture.h"
#include "guide.h"

namespace zovk {
namespace {

class Guide : public BridgePageFixture {
 protected:
  static std::string html() {
    std::ifstream file(ZOVKPOPUP_GUIDE_PAGE);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  /// Returns the page of the guide, with additions that make it visible to the test.
  std::string serve(const std::string& script) {
    return site().page("/guide", html() + "<script>" + script + "</script>");
  }
};

TEST_F(Guide, ItsPageAndItsGameWorkTogether) {
  Shop shop("Ada");
  ASSERT_TRUE(shop.open(serve("withBridge(() => document.getElementById('buy').click());")));
  shop.addCoins(5);
  EXPECT_EQ(shop.coins(), 45);
  pumpUntil([&] { return shop.coins() == 15 && shop.timesSeen() == 2; }, "the purchase");
}

TEST_F(Guide, ItsPageMayCloseItsGamesWindow) {
  Shop shop("Ada");
  ASSERT_TRUE(
      shop.open(serve("withBridge(bridge => bridge.callHandler('player', name =>"
                      "  bridge.callHandler('close', name)));")));
  shop.addCoins(1);
  pumpUntil([&] { return shop.timesSeen() == 1; }, "the page");
  sync();
}

}  // namespace
}  // namespace zovk
