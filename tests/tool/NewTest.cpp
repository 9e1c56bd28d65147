#include <array>

#include "DocumentTest.h"

namespace zovk {
namespace {

class NewCommand : public DocumentTest {
 protected:
  static std::string starter(const std::string& name) {
    return read(std::string(ZOVKPOPUP_TOOL_STARTER) + "/" + name + ".html");
  }
  static constexpr std::array kStarters = {"announcement", "event", "reward", "survey", "policy"};
};

TEST_F(NewCommand, EveryStarterIsAPageAndADocumentWithoutAnyProblem) {
  for (const std::string name : kStarters) {
    const ProgramRun run = runTool({"new", name, "--folder", path(""), "--template", name});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(read(path(name + ".html")), starter(name));
    const ProgramRun checked = check(path(name + ".json"), {"--strict"});
    EXPECT_EQ(checked.code, 0) << checked.out;
    const std::string scene = name == "policy" ? "ZOVKPolicy" : name;
    const auto explained =
        runTool({"explain", path(name + ".json"), "--scene", scene, "--json"}).json();
    EXPECT_EQ(explained.at("popups").at(0).at("verdict").as_string(), "passed") << name;
  }
}

TEST_F(NewCommand, WritesAPageAndADocumentWithoutAnyProblem) {
  const ProgramRun run = runTool({"new", "shop", "--folder", path("")});
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(read(path("shop.html")), starter("announcement"));
  const ProgramRun checked = check(path("shop.json"), {"--strict"});
  EXPECT_EQ(checked.code, 0) << checked.out;
  const auto explained =
      runTool({"explain", path("shop.json"), "--scene", "shop", "--json"}).json();
  EXPECT_EQ(explained.at("popups").at(0).at("verdict").as_string(), "passed");
}

TEST_F(NewCommand, ItsDocumentNoticesAChangeOfThePage) {
  runTool({"new", "shop", "--folder", path("")});
  write("shop.html", "changed");
  EXPECT_EQ(check(path("shop.json")).code, 1);
}

TEST_F(NewCommand, HasANameOfItsOwnWhenNoneIsGiven) {
  EXPECT_EQ(runTool({"new", "--folder", path("")}).code, 0);
  EXPECT_TRUE(std::filesystem::exists(path("welcome.html")));
  EXPECT_TRUE(std::filesystem::exists(path("welcome.json")));
}

TEST_F(NewCommand, ReplacesNothingUnlessForced) {
  for (const char* name : {"shop.html", "shop.json"}) {
    const std::string mine = write(name, "mine");
    const ProgramRun run = runTool({"new", "shop", "--folder", path("")});
    EXPECT_EQ(run.code, 73);
    EXPECT_EQ(run.err, "zovkpopup: " + mine + ": is there already; --force replaces it\n");
    EXPECT_EQ(read(mine), "mine");
    std::filesystem::remove(mine);
  }
  write("shop.html", "mine");
  EXPECT_EQ(runTool({"new", "shop", "--folder", path(""), "--force"}).code, 0);
  EXPECT_NE(read(path("shop.html")), "mine");
}

TEST_F(NewCommand, RefusesNamesThatAreNone) {
  for (const char* name : {"../up", "a b", ".hidden", "a/b", "größe"}) {
    const ProgramRun run = runTool({"new", name, "--folder", path("")});
    EXPECT_EQ(run.code, 64) << name;
    EXPECT_NE(run.err.find("is no name"), std::string::npos) << run.err;
  }
  EXPECT_EQ(runTool({"new", "a", "--folder", path("nowhere")}).code, 73);
}

TEST_F(NewCommand, ItsPageNeedsNothingFromElsewhere) {
  for (const std::string name : kStarters) {
    const std::string page = starter(name);
    ASSERT_FALSE(page.empty());
    for (const char* reference : {"http:", "https:", "src=", "href=", "@import", "url("}) {
      EXPECT_EQ(page.find(reference), std::string::npos) << name << reference;
    }
    for (const char* need : {"prefers-color-scheme: dark", "prefers-reduced-motion", "lang=\"en\"",
                             "safe-area-inset", "aria-labelledby", ":focus-visible"}) {
      EXPECT_NE(page.find(need), std::string::npos) << name << need;
    }
  }
}

}  // namespace
}  // namespace zovk
