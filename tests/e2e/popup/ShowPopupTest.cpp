#include "fixtures/HostFixture.h"

namespace zovk {
namespace {

using ShowPopup = HostFixture;

TEST_F(ShowPopup, ARealPageAnswersAndTheGameHearsIt) {
  bundle().addPage(popup("welcome", 1), answeringPage("cancel", "not now", true));
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  EXPECT_TRUE(ZOVKPopup::havePopup(1));
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_EQ(answers().front(), Answer(2, R"({"action":"cancel","msg":"notnow"})"));
}

TEST_F(ShowPopup, TwoRequestsInQuickSuccessionAreAnsweredInOrder) {
  bundle().addPage(popup("first", 1), answeringPage("cancel", "1", true));
  bundle().addPage(popup("second", 1), answeringPage("skip", "2", true));
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("first", 0, recordAnswer());
  ZOVKPopup::showPopup("second", 0, recordAnswer());
  pumpUntilAnswers(2);
  EXPECT_EQ(answers(), (std::vector<Answer>{{2, R"({"action":"cancel","msg":"1"})"},
                                            {0, R"({"action":"skip","msg":"2"})"}}));
}

TEST_F(ShowPopup, ASceneTypeShowsItsPopupsBestFirstAndAnswersAfterTheLast) {
  bundle().addPage(popup("low", 7, 2, 1), answeringPage("skip", "low", true));
  bundle().addPage(popup("high", 7, 2, 9), answeringPage("skip", "high", true));
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("", 7, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, R"({"action":"skip","msg":"low"})"}}));
}

TEST_F(ShowPopup, AOnceOnlyPageDoesNotComeBackBySceneType) {
  bundle().addPage(popup("gift", 3, kPopFreqOnce), answeringPage("skip", "", true));
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("", 3, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_FALSE(ZOVKPopup::havePopup(3));
  ZOVKPopup::showPopup("", 3, recordAnswer());
  EXPECT_EQ(answers().back(), Answer(-1, "No valid Popup now"));
}

TEST_F(ShowPopup, ACommitWithoutReportAddressIsAnError) {
  bundle().addPage(popup("shop", 1), answeringPage("commit", "bought", true));
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("shop", 0, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_EQ(answers().front(), Answer(0, "reatin complete"));
}

TEST_F(ShowPopup, APageThatPostsJunkGoesOn) {
  bundle().addPage(popup("junk", 1), R"(<!doctype html><script>
addEventListener('load', () => {
  const page = window.webkit.messageHandlers;
  const cyclic = {}; cyclic.self = cyclic;
  for (const junk of [undefined, null, 1, true, [], {}, 'x', '{"action":', () => 1, cyclic,
                      {action: 'skip'}, '{"action":5}', '{"action":"Skip"}', '[1,2]', '"skip"']) {
    try { page.ZOVKPopup.postMessage(junk); } catch (e) {}
    try { page.__qvOpenSdk.postMessage(junk); } catch (e) {}
  }
  page.ZOVKPopup.postMessage('{"action":"skip","msg":"done"}');
});
</script>)");
  bundle().write();
  ASSERT_TRUE(ZOVKPopupHost::setUp(settings()));
  ZOVKPopup::showPopup("junk", 0, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_EQ(answers(), (std::vector<Answer>{{0, R"({"action":"skip","msg":"done"})"}}));
}

TEST_F(ShowPopup, AHomeDirectoryWithBlanksAndSignsWorks) {
  auto strange = settings();
  strange.dataDirectory = (home() / "my games & 50% – #1?").string();
  bundle().addPage(popup("welcome", 1), answeringPage("skip", "", true));
  bundle().write();
  const auto resources = home() / "resources 100% #2?";
  std::filesystem::rename(bundle().resourceDirectory(), resources);
  strange.resourceDirectory = resources.string();
  ASSERT_TRUE(ZOVKPopupHost::setUp(strange));
  ZOVKPopup::showPopup("welcome", 0, recordAnswer());
  pumpUntilAnswers(1);
  EXPECT_EQ(answers().front().first, 0);
}

}  // namespace
}  // namespace zovk
