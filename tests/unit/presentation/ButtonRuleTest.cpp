#include <gmock/gmock.h>

#include "presentation/ButtonRule.h"

namespace zovk {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

ZOVKPopupModel popup(const std::string& scene, std::uint64_t popType = 1) {
  ZOVKPopupModel model;
  model.scene = scene;
  model.pop_type = popType;
  return model;
}

TEST(ButtonRule, ThePolicyKeepsItsTwoAnswersWhateverItsKindAndTheFlag) {
  for (const std::uint64_t popType : {1U, 2U}) {
    for (const bool needRefresh : {false, true}) {
      const ButtonChanges changes = buttonRule(popup("ZOVKPolicy", popType), needRefresh);
      EXPECT_THAT(changes.hide, UnorderedElementsAre("returnBtn", "crossBtn", "refreshBtn",
                                                     "aloneConfirmStackView"));
      EXPECT_THAT(changes.show, UnorderedElementsAre("backgroundView"));
      EXPECT_FALSE(changes.dimContent);
    }
  }
}

TEST(ButtonRule, ThePermissionKeepsItsLoneAnswerWhateverItsKindAndTheFlag) {
  for (const std::uint64_t popType : {1U, 2U}) {
    for (const bool needRefresh : {false, true}) {
      const ButtonChanges changes =
          buttonRule(popup("ZOVKPolicy_Permission", popType), needRefresh);
      EXPECT_THAT(changes.hide, UnorderedElementsAre("returnBtn", "crossBtn", "refreshBtn",
                                                     "rejectBtn", "stackView"));
      EXPECT_THAT(changes.show, UnorderedElementsAre("aloneConfirmStackView", "backgroundView"));
      EXPECT_FALSE(changes.dimContent);
    }
  }
}

TEST(ButtonRule, AnOrdinaryPopupKeepsTheCrossWhateverTheFlag) {
  for (const std::uint64_t popType : {0U, 1U, 3U}) {
    for (const bool needRefresh : {false, true}) {
      const ButtonChanges changes = buttonRule(popup("lobby", popType), needRefresh);
      EXPECT_THAT(changes.hide,
                  UnorderedElementsAre("rejectBtn", "confirmBtn", "stackView",
                                       "aloneConfirmStackView", "returnBtn", "refreshBtn"));
      EXPECT_THAT(changes.show, IsEmpty());
      EXPECT_FALSE(changes.dimContent);
    }
  }
}

TEST(ButtonRule, AGamePopupKeepsTheReturnAndOffersARefreshOnADimmedPageUnlessItsPageWasAllowed) {
  const ButtonChanges fresh = buttonRule(popup("lobby", 2), false);
  EXPECT_THAT(fresh.hide, UnorderedElementsAre("crossBtn", "confirmBtn", "rejectBtn", "stackView",
                                               "aloneConfirmStackView", "centerConfirmBtn"));
  EXPECT_THAT(fresh.show, UnorderedElementsAre("refreshBtn"));
  EXPECT_TRUE(fresh.dimContent);
  const ButtonChanges allowed = buttonRule(popup("lobby", 2), true);
  EXPECT_EQ(allowed.hide, fresh.hide);
  EXPECT_THAT(allowed.show, IsEmpty());
  EXPECT_FALSE(allowed.dimContent);
}

TEST(ButtonRule, ScenesAreComparedExactly) {
  for (const char* scene : {"zovkpolicy", "ZOVKPolicy2", "ZOVKPolicy_permission", ""}) {
    EXPECT_THAT(buttonRule(popup(scene), false).show, IsEmpty()) << scene;
    EXPECT_FALSE(hasAnswerButtons(popup(scene)));
  }
  EXPECT_TRUE(hasAnswerButtons(popup("ZOVKPolicy")));
  EXPECT_TRUE(hasAnswerButtons(popup("ZOVKPolicy_Permission")));
}

}  // namespace
}  // namespace zovk
