#include "fixtures/EngineFixture.h"
#include "fixtures/LogMessages.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

class PopupWindow : public EngineFixture {
 protected:
  PopupWindow() {
    engine();
    log().clear();
  }
};

TEST_F(PopupWindow, HasTheMainScreensBoundsAndAClearBackground) {
  memory().userInterface.setMainScreenBounds({10, 20, 300, 400});
  engine().initPopupWindow();
  EXPECT_THAT(debugMessages(log()), ElementsAre("Init Popup window"));
  const auto window = memory().userInterface.frontWindow();
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(window->frame(), (Rect{10, 20, 300, 400}));
  EXPECT_EQ(window->background(), Color::clear());
  EXPECT_EQ(window->rootViewController(), nullptr);
  EXPECT_EQ(window->shownCount(), 0) << "the key-window check shows it";
}

TEST_F(PopupWindow, IsEmptyWithoutAMainScreen) {
  memory().userInterface.setMainScreenBounds({});
  engine().initPopupWindow();
  EXPECT_EQ(memory().userInterface.frontWindow()->frame(), Rect{});
}

TEST_F(PopupWindow, LetsItsRootControllerGoWhenItIsReleased) {
  engine().setMergePopupArr(listOf({webPage("lobby")}));
  engine().showPopup("lobby", 0, nullptr);
  settle();
  const auto window = memory().userInterface.frontWindow();
  const std::weak_ptr<ViewController> root = window->rootViewController();
  engine().stopCheckKeyWindow();
  engine().releasePopupWindow();
  EXPECT_EQ(window->rootViewController(), nullptr);
  EXPECT_EQ(engine().window(), nullptr);
  settle();
  EXPECT_TRUE(root.expired());
}

TEST_F(PopupWindow, MayBeReleasedWhenThereIsNone) {
  engine().releasePopupWindow();
  EXPECT_THAT(debugMessages(log()), ElementsAre("Release Popup window"));
}

}  // namespace
}  // namespace zovk
