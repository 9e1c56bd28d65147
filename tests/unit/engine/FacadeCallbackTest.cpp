#include "fixtures/EngineFixture.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {
namespace {

// Callbacks that call back into the facade.
class FacadeCallback : public EngineFixture {
 protected:
  FacadeCallback() { engine().setMergePopupArr(listOf({webPage("first"), webPage("second", 2)})); }
};

TEST_F(FacadeCallback, MayAskForTheNextPopupWhichIsThenShown) {
  ZOVKPopup::showPopup("first", 0, [this](std::int32_t code, const std::string& message) {
    recordAnswer()(code, message);
    ZOVKPopup::showPopup("second", 0, recordAnswer());
  });
  settle();
  choose("skip");
  ASSERT_EQ(answers().size(), 1U);
  EXPECT_EQ(page()->lastLoad(), webPage("second").uri);
  choose("cancel");
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, resultText("skip")}, {2, resultText("cancel")}}));
  EXPECT_EQ(memory().userInterface.windowsMade(), 1U) << "the window survives between entries";
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(FacadeCallback, MayAskForTheSamePopupAgain) {
  int left = 3;
  ZOVKPopupComplete again = [&](std::int32_t code, const std::string& message) {
    recordAnswer()(code, message);
    if (--left > 0) ZOVKPopup::showPopup("first", 0, again);
  };
  ZOVKPopup::showPopup("first", 0, again);
  settle();
  for (int i = 0; i < 3; ++i) choose("skip");
  EXPECT_EQ(answers().size(), 3U);
  EXPECT_TRUE(engine().popupCache().empty());
  EXPECT_EQ(memory().userInterface.liveWindows(), 0U);
}

TEST_F(FacadeCallback, MayAskWhatThereIsToShow) {
  std::optional<bool> have;
  ZOVKPopup::showPopup("first", 0, [&](std::int32_t, const std::string&) {
    have = ZOVKPopup::havePopup(2) && !ZOVKPopup::havePopup(3);
  });
  settle();
  choose("skip");
  EXPECT_EQ(have, true);
}

TEST_F(FacadeCallback, MayChangeThePlayerAndStart) {
  ZOVKPopup::showPopup("first", 0, [](std::int32_t, const std::string&) {
    ZOVKPopup::setChannelID(9, "open", "", "");
    ZOVKPopup::startPopup("https://service.example", "1001", "secret");
  });
  settle();
  choose("skip");
  EXPECT_EQ(engine().loginState().channelID, 9);
  EXPECT_EQ(memory().urlSession.requestsTo("/popup/get_info").size(), 1U);
}

TEST_F(FacadeCallback, MayAskAgainFromAnImmediateAnswer) {
  ZOVKPopup::showPopup("nowhere", 0, [this](std::int32_t code, const std::string& message) {
    recordAnswer()(code, message);
    ZOVKPopup::showPopup("first", 0, recordAnswer());
  });
  settle();
  choose("skip");
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}, {0, resultText("skip")}}));
}

TEST_F(FacadeCallback, MayAskForTheNextPopupWhenThePolicyIsNotNeeded) {
  ZOVKPopup::showPolicy([this](std::int32_t, const std::string&) {
    ZOVKPopup::showPopup("first", 0, recordAnswer());
  });
  settle();
  EXPECT_EQ(page()->lastLoad(), webPage("first").uri);
}

TEST_F(FacadeCallback, IsOneOfItsOwnForEachRequestEvenWhenTheSameFunctionIsGivenTwice) {
  const ZOVKPopupComplete same = recordAnswer();
  ZOVKPopup::showPopup("first", 0, same);
  ZOVKPopup::showPopup("first", 0, same);
  settle();
  choose("skip", "one");
  choose("skip", "two");
  EXPECT_EQ(answers(),
            (std::vector<Answer>{{0, resultText("skip", "one")}, {0, resultText("skip", "two")}}));
}

}  // namespace
}  // namespace zovk
