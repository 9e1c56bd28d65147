#include <fstream>

#include "WebPageFixture.h"

namespace zovk {
namespace {

// A helper that can store no rules, since a file stands in their place.
class HelperWithoutRules : public testing::Test {
 protected:
  HelperWithoutRules() {
    std::filesystem::create_directory(helper_.directory() / "webhost");
    std::ofstream(helper_.directory() / "webhost/rules") << "in the way";
    helper_.send(helper_.greeting());
    helper_.await("ready");
    screen_.open();
  }
  void expectRefused(const std::string& url) {
    screen_.decide(screen_.ask(url));
    const HelperMessage failure = helper_.await("web.provisionalFailed", {{"url", url}});
    const std::string reason(failure.at("error").as_string());
    EXPECT_NE(reason.find("The rules for pages cannot be stored: "), std::string::npos) << reason;
    EXPECT_EQ(helper_.await("log").at("line"),
              boost::json::value("helper: no page is loaded: " + reason));
    EXPECT_FALSE(helper_.came("web.started"));
  }

  LoopbackServer site_;
  HelperUnderTest helper_{HelperUnderTest::Start::kSilent};
  PopupScreen screen_{helper_};
};

TEST_F(HelperWithoutRules, LoadsNoPageFile) {
  expectRefused(PopupScreen::pageUrl("plain.html"));
}

TEST_F(HelperWithoutRules, LoadsNoWebPage) {
  expectRefused(site_.serve("/page", 200, "page"));
  EXPECT_TRUE(site_.requests().empty());
}

}  // namespace
}  // namespace zovk
