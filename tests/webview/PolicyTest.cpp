#include <string>

#include <gtest/gtest.h>

#include "PopupScreen.h"

namespace zovk {
namespace {

constexpr int kWebView = PopupScreen::kWebView;

class HelperPolicy : public testing::Test {
 protected:
  HelperPolicy() { screen_.openPage("plain.html"); }

  void decide(const HelperMessage& question, bool allow) {
    helper_.send({{"type", "web.decide"},
                  {"view", kWebView},
                  {"decision", question.at("decision")},
                  {"allow", allow}});
  }

  /// Gives the page's only frame an address, making the frame first.
  void navigateFrame(const std::string& url) {
    screen_.evaluate(
        "(() => { let frame = document.querySelector('iframe');"
        "const isNew = !frame; frame = frame ?? document.createElement('iframe');"
        "frame.src = '" +
        url + "'; if (isNew) document.body.append(frame); })()");
  }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

TEST_F(HelperPolicy, LetsAnAllowedNavigationGoOn) {
  screen_.evaluate("location.href = 'other.html'; 0");
  const HelperMessage question = helper_.await("web.policy");
  EXPECT_EQ(question.at("url"), boost::json::value(PopupScreen::pageUrl("other.html")));
  decide(question, true);
  helper_.await("web.finished", {{"url", PopupScreen::pageUrl("other.html")}});
}

TEST_F(HelperPolicy, KeepsThePageWhenANavigationIsCancelled) {
  screen_.evaluate("location.href = 'other.html'; 0");
  decide(helper_.await("web.policy"), false);
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
  EXPECT_FALSE(helper_.came("web.finished"));
}

TEST_F(HelperPolicy, AsksAboutEveryAddressThatAFrameIsGiven) {
  for (int i = 0; i < 3; ++i) {
    navigateFrame("zovk-signal://queue");
    const HelperMessage question = helper_.await("web.policy");
    EXPECT_EQ(question.at("url"), "zovk-signal://queue");
    decide(question, false);
  }
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

TEST_F(HelperPolicy, GivesEachQuestionANumberOfItsOwn) {
  navigateFrame("zovk-signal://one");
  const HelperMessage first = helper_.await("web.policy");
  decide(first, false);
  navigateFrame("zovk-signal://two");
  const HelperMessage second = helper_.await("web.policy");
  EXPECT_NE(first.at("decision"), second.at("decision"));
  decide(second, false);
}

TEST_F(HelperPolicy, TakesTheFirstAnswerOnly) {
  screen_.evaluate("location.href = 'other.html'; 0");
  const HelperMessage question = helper_.await("web.policy");
  decide(question, false);
  decide(question, true);
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

TEST_F(HelperPolicy, CancelsWhatWasNeverAnsweredWhenTheViewCloses) {
  screen_.evaluate("location.href = 'other.html'; 0");
  const HelperMessage question = helper_.await("web.policy");
  helper_.send({{"type", "web.close"}, {"view", kWebView}});
  decide(question, true);
  helper_.sync();
  EXPECT_FALSE(helper_.came("web.finished"));
}

TEST_F(HelperPolicy, SurvivesTheEndOfTheProcessThatWaits) {
  screen_.evaluate("location.href = 'other.html'; 0");
  const HelperMessage question = helper_.await("web.policy");
  helper_.send({{"type", "web.terminate"}, {"view", kWebView}});
  helper_.await("web.terminated");
  decide(question, true);
  helper_.sync();
}

TEST_F(HelperPolicy, TellsOfANewWindowAndMakesNone) {
  screen_.evaluate(
      "document.body.innerHTML = '<a id=link target=_blank href=other.html>x</a>';"
      "document.getElementById('link').click(); 0");
  const HelperMessage question = helper_.await("web.policy");
  EXPECT_EQ(question.at("target"), "none");
  EXPECT_EQ(question.at("url"), boost::json::value(PopupScreen::pageUrl("other.html")));
  decide(question, true);
  const HelperMessage wish = helper_.await("web.window", {{"view", kWebView}});
  EXPECT_EQ(wish.at("url"), boost::json::value(PopupScreen::pageUrl("other.html")));
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

}  // namespace
}  // namespace zovk
