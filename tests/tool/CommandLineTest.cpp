#include "ProgramRun.h"
#include "support/Version.h"

namespace zovk {
namespace {

TEST(CommandLine, TellsItsVersion) {
  const ProgramRun run = runTool({"--version"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, std::string("zovkpopup ") + kPopupVersion + "\n");
}

TEST(CommandLine, HelpNamesEveryCommand) {
  const ProgramRun run = runTool({"--help"});
  EXPECT_EQ(run.code, 0);
  for (const char* command : {"sig", "check", "explain", "new", "preview", "completion"}) {
    EXPECT_NE(run.out.find(std::string("\n  ") + command + " "), std::string::npos) << command;
    EXPECT_EQ(runTool({command, "--help"}).code, 0) << command;
  }
}

TEST(CommandLine, AMisspeltCommandNamesTheNearest) {
  const ProgramRun run = runTool({"chekc", "popups.json"});
  EXPECT_EQ(run.code, 64);
  EXPECT_EQ(run.err, "zovkpopup: chekc: is no command; is check meant?\n");
  EXPECT_EQ(runTool({"something"}).err, "zovkpopup: something: is no command\n");
}

TEST(CommandLine, MistakesAreUsageErrorsAndGoToStandardError) {
  const std::vector<std::vector<std::string>> mistakes = {
      {},
      {"unknown"},
      {"sig"},
      {"sig", "a", "b"},
      {"check"},
      {"check", "a", "--unknown"},
      {"check", "a", "--as", "neither"},
      {"explain", "a"},
      {"new", "a", "--template", "unknown"},
      {"explain", "a", "--scene", "x", "--scene-type", "1"},
      {"explain", "a", "--scene-type", "one"},
      {"preview"},
      {"preview", "a", "--kind", "unknown"},
      {"preview", "a", "--theme", "pink"},
      {"preview", "a", "--scale", "9"},
      {"preview", "a", "--watch", "--json"},
      {"preview", "a", "--screenshot", "b", "--matrix", "c"},
      {"completion"},
      {"completion", "tcsh"}};
  for (const auto& arguments : mistakes) {
    const ProgramRun run = runTool(arguments);
    EXPECT_EQ(run.code, 64) << ::testing::PrintToString(arguments);
    EXPECT_EQ(run.out, "") << ::testing::PrintToString(arguments);
    EXPECT_NE(run.err, "") << ::testing::PrintToString(arguments);
  }
}

TEST(CommandLine, OutputThatCannotBeWrittenIsAnError) {
  const ProgramRun run = runProgram(
      {"/bin/sh", "-c", std::string("exec '") + ZOVKPOPUP_TOOL + "' completion bash >/dev/full"});
  EXPECT_EQ(run.code, 74);
  EXPECT_EQ(run.err, "zovkpopup: standard output: cannot be written\n");
}

}  // namespace
}  // namespace zovk
