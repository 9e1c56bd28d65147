#include "DocumentTest.h"

namespace zovk {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Reasons why the engine rejects a whole document.
class CheckDocument : public DocumentTest {
 protected:
  std::vector<std::string> problemsOfText(const std::string& text) const {
    const ProgramRun run = check(write("popups.json", text));
    EXPECT_EQ(run.code, 1) << text;
    return problems(run);
  }
};

TEST_F(CheckDocument, WithoutProblemsIsGood) {
  const ProgramRun run = check(document({webPage("a"), pageFile("b", 2)}), {"--strict"});
  EXPECT_EQ(run.code, 0);
  EXPECT_THAT(problems(run), IsEmpty());
  EXPECT_TRUE(run.json().at("ok").as_bool());
}

TEST_F(CheckDocument, ThatIsNoJsonIsToldWithLineAndColumn) {
  struct Case {
    const char* text;
    int line;
    int column;
  };
  for (const Case& c : {Case{"{\"popups\": tru}", 1, 12}, Case{"{\n  \"a\": 1,\n  }", 3, 3},
                        Case{"{} x", 1, 4}, Case{"{\"a\":1", 1, 7}, Case{"", 1, 1},
                        Case{"\n\n[1,\n 2", 4, 3}, Case{"{\"a\":\"\xff\"}", 1, 7}}) {
    const ProgramRun run = check(write("bad.json", c.text));
    EXPECT_EQ(run.code, 1) << c.text;
    const auto report = run.json();
    const auto& problem = report.at("problems").at(0);
    EXPECT_EQ(problem.at("line").to_number<int>(), c.line) << c.text;
    EXPECT_EQ(problem.at("column").to_number<int>(), c.column) << c.text;
  }
  const ProgramRun run = runTool({"check", write("bad.json", "{\n  \"a\": tru}")});
  EXPECT_EQ(run.out, path("bad.json") + ":2:8: error: is no JSON: syntax error\n" +
                         "    \"a\": tru}\n         ^\n" + path("bad.json") +
                         ": 1 error, 0 warnings\n");
}

TEST_F(CheckDocument, MayBeginWithAByteOrderMarkWhichIsNoColumn) {
  const ProgramRun bad = check(write("bad.json", "\xEF\xBB\xBF{} x"));
  EXPECT_EQ(bad.json().at("problems").at(0).at("column").to_number<int>(), 4);
  EXPECT_THAT(problemsOfText("\xEF\xBB\xBF{}"), ElementsAre("error /popups is missing"));
}

TEST_F(CheckDocument, MayLieAsDeepAsTheEngineReads) {
  const auto nested = [](std::size_t depth) {
    return std::string(depth, '[') + std::string(depth, ']');
  };
  EXPECT_THAT(problemsOfText(nested(512)),
              ElementsAre("error  the document is an array, no object"));
  EXPECT_THAT(problemsOfText(nested(513)),
              ElementsAre(::testing::StartsWith("error  is no JSON: too deep")));
}

TEST_F(CheckDocument, MustBeAnObjectWithAListOfPopups) {
  EXPECT_THAT(problemsOfText("[]"), ElementsAre("error  the document is an array, no object"));
  EXPECT_THAT(problemsOfText("{}"), ElementsAre("error /popups is missing"));
  EXPECT_THAT(problemsOfText(R"({"popups":{}})"),
              ElementsAre("error /popups is an object, no array"));
  EXPECT_THAT(problemsOfText(R"({"popups":[]})"), ElementsAre("error /popups is empty"));
}

TEST_F(CheckDocument, ThatIsRemoteMustHaveAGoodHead) {
  EXPECT_THAT(problemsOfText(R"({"code":"5x","popups":[1]})"),
              Contains("error /code is \"5x\"; the engine rejects anything but 0"));
  for (const char* key : {"code", "server_time"}) {
    const std::string text = std::string(R"({")") + key + R"(":null,"popups":[1]})";
    EXPECT_THAT(problemsOfText(text),
                Contains(std::string("error /") + key + " is null where there must be a number"));
  }
  const std::string local =
      boost::json::serialize(boost::json::object{{"code", nullptr}, {"popups", {webPage("a")}}});
  EXPECT_EQ(check(write("ZOVKPopupLocal.config", local)).code, 0);
}

TEST_F(CheckDocument, NamesTheNumberThatIsNone) {
  for (const char* key : {"pop_id", "scene_type", "pop_type", "content_type", "pop_freq",
                          "priority", "publish_time", "valid_time", "expire_time"}) {
    const auto file = document({webPage("a"), with(webPage("b", 2), key, nullptr)});
    EXPECT_THAT(problems(check(file)), ElementsAre(std::string("error /popups/1/") + key +
                                                   " is null where there must be a number"));
  }
  EXPECT_THAT(problemsOf(with(webPage("a"), "priority", boost::json::array())),
              ElementsAre("error /popups/0/priority is an array where there must be a number"));
}

TEST_F(CheckDocument, NamesEntriesThatArePassedOver) {
  const ProgramRun run = check(document({1, boost::json::object(), webPage("a")}));
  EXPECT_EQ(run.code, 1);
  EXPECT_THAT(problems(run),
              ElementsAre("error /popups/0 is no object with members, and is passed over",
                          "error /popups/1 is no object with members, and is passed over"));
}

TEST_F(CheckDocument, KeepsThePlacesOfEntriesBehindThoseThatArePassedOver) {
  EXPECT_THAT(problems(check(document({1, with(webPage("a"), "sig", "x")}))),
              Contains(::testing::StartsWith("error /popups/1/sig ")));
}

TEST_F(CheckDocument, ShowsProblemsToPeopleWithTheirPlaces) {
  const std::string file = document({with(webPage("a"), "pop_type", 7)});
  const ProgramRun run = runTool({"check", file});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, file +
                         ": /popups/0/pop_type: warning: is 7 and counts as an ordinary popup; "
                         "write 1, or 2 for a game page\n" +
                         file + ": 0 errors, 1 warning\n");
  EXPECT_EQ(runTool({"check", file, "--strict"}).code, 1);
}

TEST_F(CheckDocument, CountsWhatItFinds) {
  const auto report = check(document({with(with(webPage("a"), "sig", "x"), "pop_type", 7)})).json();
  EXPECT_FALSE(report.at("ok").as_bool());
  EXPECT_EQ(report.at("errors").to_number<int>(), 1);
  EXPECT_EQ(report.at("warnings").to_number<int>(), 1);
}

}  // namespace
}  // namespace zovk
