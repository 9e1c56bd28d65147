#include <string>

#include <gtest/gtest.h>

#include "PopupScreen.h"

namespace zovk {
namespace {

class HelperScriptMessage : public testing::Test {
 protected:
  HelperScriptMessage() { screen_.openPage("plain.html"); }

  /// Has the page post a value on a channel; what arrived.
  HelperMessage post(const std::string& value, const std::string& channel = "ZOVKPopup") {
    screen_.evaluate("window.webkit.messageHandlers." + channel + ".postMessage(" + value + ")");
    return helper_.await("web.message", {{"view", PopupScreen::kWebView}, {"name", channel}});
  }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

TEST_F(HelperScriptMessage, TellsTextFromObjectAndNumber) {
  EXPECT_EQ(post(R"('{"action":"skip"}')").at("body"), R"({"action":"skip"})");
  EXPECT_EQ(post("({action: 'skip', n: [1, true, null]})").at("body"),
            (boost::json::value{{"action", "skip"}, {"n", {1, true, nullptr}}}));
  EXPECT_EQ(post("5").at("body"), 5);
  EXPECT_EQ(post("1.5").at("body"), 1.5);
  EXPECT_EQ(post("true").at("body"), true);
  EXPECT_EQ(post("''").at("body"), "");
}

TEST_F(HelperScriptMessage, TellsNullFromNothing) {
  EXPECT_EQ(post("null").at("body"), nullptr);
  EXPECT_FALSE(post("undefined").contains("body"));
}

TEST_F(HelperScriptMessage, ArrivesOnTheChannelItWasPostedOn) {
  EXPECT_EQ(post("({action: 'confirm'})", "__qvOpenSdk").at("name"), "__qvOpenSdk");
}

TEST_F(HelperScriptMessage, ArrivesInOrder) {
  screen_.evaluate(
      "for (let i = 0; i < 500; ++i) window.webkit.messageHandlers.ZOVKPopup.postMessage(i)");
  for (int i = 0; i < 500; ++i) ASSERT_EQ(helper_.await("web.message").at("body"), i);
}

TEST_F(HelperScriptMessage, KeepsAllCharactersAndMendsHalfOnes) {
  EXPECT_EQ(post("'\\u00e4 \\u{1F600} \\\\ud800 \\u0001'").at("body"),
            "\xC3\xA4 \xF0\x9F\x98\x80 \\ud800 \x01");
  EXPECT_EQ(post("'a\\ud800b'").at("body"),
            "a\xEF\xBF\xBD"
            "b");
}

TEST_F(HelperScriptMessage, WithAValueThatIsNoJsonDoesNoHarm) {
  screen_.evaluate(
      "const loop = {}; loop.loop = loop;"
      "for (const value of [loop, () => 1, Symbol('x'), 10n, NaN, new Map(), document])"
      "  try { window.webkit.messageHandlers.ZOVKPopup.postMessage(value); } catch {}");
  EXPECT_EQ(post("'after'", "__qvOpenSdk").at("body"), "after");
}

TEST_F(HelperScriptMessage, ThatIsTooDeepIsLeftOutWithOneLine) {
  screen_.evaluate(
      "let deep = 1; for (let i = 0; i < 513; ++i) deep = [deep];"
      "window.webkit.messageHandlers.ZOVKPopup.postMessage(deep)");
  EXPECT_TRUE(helper_.await("log").at("line").as_string().starts_with(
      "helper: a page's message was left out"));
  EXPECT_EQ(post("'after'", "__qvOpenSdk").at("body"), "after");
}

TEST_F(HelperScriptMessage, MayBe512LevelsDeep) {
  boost::json::value body =
      post("(() => { let deep = 1; for (let i = 0; i < 512; ++i) deep = [deep]; return deep; })()")
          .at("body");
  int levels = 0;
  for (; body.is_array(); ++levels) body = boost::json::value(body.as_array().at(0));
  EXPECT_EQ(levels, 512);
}

TEST_F(HelperScriptMessage, OfAMegabyteArrivesWhole) {
  const boost::json::value body = post("'x'.repeat(1 << 20)").at("body");
  EXPECT_EQ(body.as_string().size(), std::size_t{1} << 20);
}

}  // namespace
}  // namespace zovk
