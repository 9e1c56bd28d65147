#include "ProgramRun.h"

namespace zovk {
namespace {

class Manual : public ToolTest {
 protected:
  const std::string manual_ = read(ZOVKPOPUP_TOOL_MANUAL);
};

TEST_F(Manual, TellsOfEveryOptionOfEveryCommand) {
  for (const char* command : {"sig", "check", "explain", "publish", "new", "preview"}) {
    EXPECT_NE(manual_.find(std::string(".Ss ") + command + "\n"), std::string::npos) << command;
    const std::string help = runTool({command, "--help"}).out;
    for (std::size_t at = help.find("--"); at != std::string::npos; at = help.find("--", at + 2)) {
      const std::string option = help.substr(at + 2, help.find_first_of(" ,\n", at) - at - 2);
      EXPECT_NE(manual_.find("Fl -" + option), std::string::npos) << command << " --" << option;
    }
  }
}

TEST_F(Manual, OfTheServiceTellsOfEveryOptionItHas) {
  const std::string manual = read(ZOVKPOPUP_SERVICE_MANUAL);
  const std::string help = runProgram({ZOVKPOPUP_SERVICE, "--help"}).out;
  std::size_t count = 0;
  for (std::size_t at = help.find("--"); at != std::string::npos; at = help.find("--", at + 2)) {
    const std::string option = help.substr(at + 2, help.find_first_of(" ,\n", at) - at - 2);
    EXPECT_NE(manual.find("Fl -" + option), std::string::npos) << option;
    ++count;
  }
  EXPECT_GT(count, 10U);
}

TEST_F(Manual, IsFormattedWithoutAnyComplaint) {
  for (const char* manual : {ZOVKPOPUP_TOOL_MANUAL, ZOVKPOPUP_SERVICE_MANUAL}) {
    const ProgramRun run = runProgram({"/usr/bin/env", "MANROFFSEQ=", "LC_ALL=C.UTF-8", "man",
                                       "--warnings", "-E", "UTF-8", "-l", "-Tutf8", "-Z", manual});
    EXPECT_EQ(run.code, 0) << manual;
    EXPECT_EQ(run.err, "") << manual;
    EXPECT_NE(run.out, "") << manual;
  }
}

TEST_F(Manual, NamesEveryExitCode) {
  for (const char* code : {"0", "1", "64", "65", "66", "69", "70", "73", "74"}) {
    EXPECT_NE(manual_.find(std::string("\n.It ") + code + "\n"), std::string::npos) << code;
  }
}

}  // namespace
}  // namespace zovk
