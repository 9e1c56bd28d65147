// What the helper does before the game has answered.
#include <string>

#include <gtest/gtest.h>

#include "PopupScreen.h"

namespace zovk {
namespace {

constexpr int kWebView = PopupScreen::kWebView;

class HelperAhead : public testing::Test {
 protected:
  HelperMessage loadAllowed(const std::string& name) {
    const std::string url = PopupScreen::pageUrl(name);
    helper_.send({{"type", "web.loadFile"},
                  {"view", kWebView},
                  {"url", url},
                  {"readAccess", url},
                  {"allowed", true}});
    return helper_.await("web.policy");
  }
  void decide(const HelperMessage& question, bool allow) {
    helper_.send({{"type", "web.decide"},
                  {"view", kWebView},
                  {"decision", question.at("decision")},
                  {"allow", allow}});
  }
  void fetchAhead(const std::string& address) {
    helper_.send({{"type", "web.fetchAhead"},
                  {"view", kWebView},
                  {"address", address},
                  {"script", "[document.title, ++window.fetches].join()"}});
    screen_.evaluate("window.fetches = 0");
  }
  void signal(const std::string& address) {
    screen_.evaluate("(() => { const frame = document.createElement('iframe'); frame.src = '" +
                     address + "'; document.body.append(frame); })()");
  }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

TEST_F(HelperAhead, LoadsWhatWillBeAllowedBeforeTheAnswer) {
  screen_.open();
  const HelperMessage question = loadAllowed("plain.html");
  EXPECT_EQ(question.at("url"), boost::json::value(PopupScreen::pageUrl("plain.html")));
  helper_.await("web.finished");
  decide(question, true);
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
}

TEST_F(HelperAhead, AsksAboutAPageThatGoesElsewhereByItself) {
  screen_.open();
  decide(loadAllowed("plain.html"), true);
  helper_.await("web.finished");
  screen_.evaluate("location.href = 'other.html'; 0");
  const HelperMessage question = helper_.await("web.policy");
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
  decide(question, true);
  helper_.await("web.finished");
}

TEST_F(HelperAhead, AsksAboutTheSameAddressTheNextTime) {
  screen_.open();
  decide(loadAllowed("plain.html"), true);
  helper_.await("web.finished");
  const std::string url = PopupScreen::pageUrl("plain.html");
  screen_.evaluate("window.marked = true");
  const HelperMessage question = screen_.ask(url);
  EXPECT_EQ(screen_.evaluate("window.marked"), true);
  decide(question, true);
  helper_.await("web.finished");
}

TEST_F(HelperAhead, LoadsNoDirectoryWhateverIsAllowed) {
  screen_.open();
  const std::string url = PopupScreen::pageUrl("");
  helper_.send({{"type", "web.loadFile"},
                {"view", kWebView},
                {"url", url},
                {"readAccess", url},
                {"allowed", true}});
  decide(helper_.await("web.policy"), true);
  helper_.await("web.provisionalFailed");
}

TEST_F(HelperAhead, FetchesWhatAPageHasToSayBeforeTheAnswer) {
  screen_.openPage("plain.html");
  fetchAhead("https://__signal__/");
  signal("https://__signal__");
  const HelperMessage question = helper_.await("web.policy");
  ASSERT_TRUE(question.contains("fetching"));
  const HelperMessage fetched = helper_.await("web.fetched");
  EXPECT_EQ(fetched.at("decision"), question.at("decision"));
  EXPECT_EQ(fetched.at("value"), "Plain,1");
  decide(question, false);
}

TEST_F(HelperAhead, FetchesAFewTimesOnlyForAGameThatDoesNotAnswer) {
  constexpr int kMost = 8;
  screen_.openPage("plain.html");
  fetchAhead("https://__signal__/");
  HelperMessage question;
  for (int i = 0; i < kMost; ++i) {
    signal("https://__signal__");
    question = helper_.await("web.policy");
    EXPECT_TRUE(question.contains("fetching"));
  }
  signal("https://__signal__");
  const HelperMessage tooMany = helper_.await("web.policy");
  EXPECT_FALSE(tooMany.contains("fetching"));
  EXPECT_EQ(screen_.evaluate("window.fetches"), kMost);
  decide(question, false);
  decide(tooMany, false);
  signal("https://__signal__");
  EXPECT_TRUE(helper_.await("web.policy").contains("fetching"));
}

TEST_F(HelperAhead, FetchesForThatAddressOnly) {
  screen_.openPage("plain.html");
  fetchAhead("https://__signal__/");
  signal("https://__other__");
  const HelperMessage question = helper_.await("web.policy");
  EXPECT_FALSE(question.contains("fetching"));
  decide(question, false);
}

TEST_F(HelperAhead, StopsFetchingWhenItIsTakenBack) {
  screen_.openPage("plain.html");
  fetchAhead("https://__signal__/");
  fetchAhead("");
  signal("https://__signal__");
  const HelperMessage question = helper_.await("web.policy");
  EXPECT_FALSE(question.contains("fetching"));
  decide(question, false);
}

}  // namespace
}  // namespace zovk
