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

TEST_F(Manual, IsFormattedWithoutAnyComplaint) {
  const ProgramRun run =
      runProgram({"/usr/bin/env", "MANROFFSEQ=", "LC_ALL=C.UTF-8", "man", "--warnings", "-E",
                  "UTF-8", "-l", "-Tutf8", "-Z", ZOVKPOPUP_TOOL_MANUAL});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(run.out, "");
}

}  // namespace
}  // namespace zovk
