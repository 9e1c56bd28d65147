#include <filesystem>

#include "WebPageFixture.h"

namespace zovk {
namespace {

class HelperAddress : public testing::Test {
 protected:
  HelperAddress() { screen_.open(); }

  HelperUnderTest helper_;
  PopupScreen screen_{helper_};
};

TEST_F(HelperAddress, IsToldAsTheEngineWritesItBeforeAnythingElseOfTheLoad) {
  const std::vector<std::pair<std::string, std::string>> addresses = {
      {"http://127.0.0.1:1/a", "http://127.0.0.1:1/a"},
      {"http://LocalHost:1/A", "http://localhost:1/A"},
      {"HTTP://127.0.0.1:1/a", "http://127.0.0.1:1/a"},
      {"http://127.0.0.1:1", "http://127.0.0.1:1/"},
      {"http://127.0.0.1:1/a b?c d", "http://127.0.0.1:1/a%20b?c%20d"},
      {"http://127.0.0.1:1/\xC3\xB6", "http://127.0.0.1:1/%C3%B6"},
      {"http://127.0.0.1:1/x/../a", "http://127.0.0.1:1/a"},
  };
  for (const auto& [asked, address] : addresses) {
    helper_.send({{"type", "web.load"}, {"view", PopupScreen::kWebView}, {"url", asked}});
    const HelperMessage told = helper_.await("web.address", {{"asked", asked}});
    EXPECT_FALSE(helper_.came("web.address"));
    EXPECT_EQ(told.at("url"), boost::json::value(address));
    const HelperMessage question = helper_.await("web.policy");
    EXPECT_EQ(question.at("url"), boost::json::value(address));
    screen_.decide(question, false);
  }
}

class HelperNoFile : public HelperAddress, public testing::WithParamInterface<const char*> {};

TEST_P(HelperNoFile, FailsToLoad) {
  const HelperMessage question = screen_.ask(GetParam());
  screen_.decide(question);
  const HelperMessage failure = helper_.await("web.provisionalFailed");
  EXPECT_EQ(failure.at("url"), question.at("url"));
  EXPECT_FALSE(failure.at("error").as_string().empty());
  EXPECT_FALSE(helper_.came("web.started"));
  EXPECT_FALSE(helper_.came("web.finished"));
}

INSTANTIATE_TEST_SUITE_P(Addresses, HelperNoFile,
                         testing::Values("file://", "file:///", "file:///tmp", "file:///tmp/?a#b",
                                         "FILE:///tmp", "file:/tmp", "file:///tmp/%2e%2e/",
                                         "file://localhost/tmp", "file:///dev/null",
                                         "file:///proc/self/cwd"));

TEST_F(HelperAddress, OfADirectoryIsNotOpenToAPageEither) {
  screen_.loadPage("plain.html");
  helper_.await("web.started");
  screen_.evaluate("location.href = '.'; 0");
  screen_.decide(helper_.await("web.policy"));
  helper_.await("web.provisionalFailed");
  EXPECT_EQ(screen_.evaluate("document.title"), "Plain");
  EXPECT_FALSE(helper_.came("web.started"));
}

}  // namespace
}  // namespace zovk
