#include "DocumentTest.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

class ExplainCommand : public DocumentTest {
 protected:
  static ProgramRun explain(const std::string& file, std::vector<std::string> more) {
    more.insert(more.begin(), {"explain", file, "--at", kNow});
    return runTool(more);
  }
  /// "verdict rank" of each popup.
  static std::vector<std::string> verdicts(const std::string& file, std::vector<std::string> more) {
    more.emplace_back("--json");
    std::vector<std::string> result;
    const auto report = explain(file, more).json();
    for (const auto& popup : report.at("popups").as_array()) {
      result.push_back(std::string(popup.at("verdict").as_string()) + " " +
                       std::to_string(popup.at("rank").to_number<int>()));
    }
    return result;
  }
};

TEST_F(ExplainCommand, RanksWhatIsShownForASceneType) {
  const std::string file = document({webPage("a"), with(webPage("b"), "priority", 9),
                                     with(webPage("c"), "scene_type", 2), pageFile("d")});
  EXPECT_THAT(verdicts(file, {"--scene-type", "1"}),
              ElementsAre("passed 3", "passed 1", "other_scene_type 0", "passed 2"));
}

TEST_F(ExplainCommand, StopsAtThePopupThatStandsForAScene) {
  const std::string file = document({webPage("a"), with(webPage("b"), "sig", "x"), webPage("b")});
  EXPECT_THAT(verdicts(file, {"--scene", "b"}),
              ElementsAre("other_scene 0", "digest_differs 0", "not_reached 0"));
}

TEST_F(ExplainCommand, JudgesForTheChannelAndTheTimeThatAreGiven) {
  boost::json::object entry = with(webPage("a"), "valid_platform", "7");
  entry["expire_time"] = 2'000'000;
  const std::string file = document({entry});
  EXPECT_THAT(verdicts(file, {"--scene", "a"}), ElementsAre("other_channel 0"));
  EXPECT_THAT(verdicts(file, {"--scene", "a", "--channel", "7"}), ElementsAre("passed 1"));
  for (const char* late : {"2000000", "1970-01-24T03:33:20Z", "1970-01-24T03:34", "1970-02-01"}) {
    EXPECT_EQ(runTool({"explain", file, "--scene", "a", "--channel", "7", "--at", late, "--json"})
                  .json()
                  .at("popups")
                  .at(0)
                  .at("verdict")
                  .as_string(),
              "expired")
        << late;
  }
  const ProgramRun wrong = runTool({"explain", file, "--scene", "a", "--at", "tomorrow"});
  EXPECT_EQ(wrong.code, 64);
  EXPECT_NE(wrong.err.find("--at tomorrow: is no time"), std::string::npos) << wrong.err;
}

TEST_F(ExplainCommand, TellsWhatWasCompared) {
  const auto report =
      explain(document({with(webPage("a"), "sig", "x")}), {"--scene", "a", "--json"}).json();
  EXPECT_EQ(report.at("sentence").as_string(),
            "Nothing is shown for scene \"a\": none of 1 passes.");
  const auto& popup = report.at("popups").at(0);
  EXPECT_EQ(popup.at("wanted").as_string(), "x");
  EXPECT_EQ(popup.at("found").as_string(), md5Hex("https://popups.example/a"));
  EXPECT_EQ(popup.at("page").as_string(), "https://popups.example/a");
}

TEST_F(ExplainCommand, FindsPagesByEitherNameAndSaysWhereItLooked) {
  const boost::json::object entry = pageFile("a");
  const std::string file = document({entry});
  EXPECT_THAT(verdicts(file, {"--scene", "a"}), ElementsAre("passed 1"));
  const std::string own = "ZOVKPopup_1_1_1_" + md5Hex(pageText("a")) + ".html";
  std::filesystem::create_directory(path("pages"));
  const auto elsewhere = explain(file, {"--scene", "a", "--pages", path("pages"), "--json"}).json();
  EXPECT_EQ(elsewhere.at("popups").at(0).at("verdict").as_string(), "file_missing");
  EXPECT_EQ(elsewhere.at("popups").at(0).at("sentence").as_string(),
            "There is no page file " + path("pages/" + own) + " or " + path("pages/a.html") +
                "; is it elsewhere (--pages)?");
  std::filesystem::rename(path("a.html"), path("pages/" + own));
  EXPECT_THAT(verdicts(file, {"--scene", "a", "--pages", path("pages")}), ElementsAre("passed 1"));
}

TEST_F(ExplainCommand, ShowsATableToPeople) {
  const ProgramRun run = explain(document({webPage("lobby", 12)}), {"--scene", "lobby"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out,
            "For scene \"lobby\", 1 of 1 would be shown.\n\n"
            "RANK   POP_ID  SCENE  VERDICT           WHY\n"
            "   1       12  lobby  passed            It passes every rule.\n");
}

TEST_F(ExplainCommand, OfARejectedDocumentSaysWhyAndWhatToDo) {
  const ProgramRun run = explain(write("bad.json", R"({"popups":[]})"), {"--scene", "a"});
  EXPECT_EQ(run.code, 65);
  EXPECT_EQ(run.err, "zovkpopup: " + path("bad.json") +
                         ": the engine rejects it: No Popups or Popups type error (zovkpopup check "
                         "tells more)\n");
}

TEST_F(ExplainCommand, TakesADocumentForLocalByItsNameOrAsTold) {
  const std::string text = R"({"code":5,"popups":[{"scene":"a","content_type":3}]})";
  const std::string local = write("ZOVKPopupLocal.config", text);
  EXPECT_EQ(explain(local, {"--scene", "a"}).code, 0) << "a local document's code is not read";
  EXPECT_EQ(explain(local, {"--scene", "a", "--as", "remote"}).code, 65);
  const std::string other = write("other.json", text);
  EXPECT_EQ(explain(other, {"--scene", "a"}).code, 65);
  EXPECT_EQ(explain(other, {"--scene", "a", "--as", "local"}).code, 0);
}

TEST_F(ExplainCommand, OfNoDocumentOrNoFolderSaysThatThereIsNone) {
  EXPECT_EQ(explain(path("nothing.json"), {"--scene", "a"}).code, 66);
  const ProgramRun run =
      explain(document({webPage("a")}), {"--scene", "a", "--pages", path("nowhere")});
  EXPECT_EQ(run.code, 66);
  EXPECT_EQ(run.err, "zovkpopup: --pages " + path("nowhere") + ": is no folder\n");
}

}  // namespace
}  // namespace zovk
