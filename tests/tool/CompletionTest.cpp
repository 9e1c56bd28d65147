#include "ProgramRun.h"

namespace zovk {
namespace {

// bash itself completes a line with the script that the tool prints.
class BashCompletion : public ToolTest {
 protected:
  std::vector<std::string> complete(const std::vector<std::string>& words) const {
    const std::string script = write("completion.bash", runTool({"completion", "bash"}).out);
    std::string program = "cd '" + path("") + "'; . '" + script + "'; COMP_WORDS=(zovkpopup";
    for (const std::string& word : words) program += " '" + word + "'";
    program += "); COMP_CWORD=" + std::to_string(words.size()) +
               "; _zovkpopup; printf '%s\\n' \"${COMPREPLY[@]}\"";
    const ProgramRun run = runProgram({"/bin/bash", "-c", program});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, "");
    return lines(run.out);
  }
  static std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> result;
    for (std::size_t start = 0; start < text.size();) {
      const std::size_t end = text.find('\n', start);
      result.push_back(text.substr(start, end - start));
      start = end + 1;
    }
    return result;
  }
};

using Words = std::vector<std::string>;

TEST_F(BashCompletion, OffersTheCommands) {
  EXPECT_EQ(complete({"e"}), Words{"explain"});
  EXPECT_EQ(complete({"c"}), (Words{"check", "completion"}));
}

TEST_F(BashCompletion, OffersEveryOptionThatACommandHas) {
  for (const char* command : {"sig", "check", "explain", "publish", "new", "preview"}) {
    const Words offered = complete({command, "--"});
    const std::string help = runTool({command, "--help"}).out;
    std::size_t count = 0;
    for (std::size_t at = help.find("--"); at != std::string::npos; at = help.find("--", at + 2)) {
      if (help[at - 1] != ' ' && help[at - 1] != ',') continue;
      const std::string option = help.substr(at, help.find_first_of(" ,\n", at) - at);
      EXPECT_NE(std::find(offered.begin(), offered.end(), option), offered.end())
          << command << " " << option;
      ++count;
    }
    EXPECT_EQ(count, offered.size()) << command << ": " << ::testing::PrintToString(offered);
  }
}

TEST_F(BashCompletion, OffersTheValuesOfAnOption) {
  EXPECT_EQ(complete({"check", "x", "--as", ""}), (Words{"remote", "site", "local", "bundle"}));
  EXPECT_EQ(complete({"preview", "x", "--kind", "p"}), (Words{"policy", "permission"}));
  EXPECT_EQ(complete({"preview", "x", "--theme", "d"}), Words{"dark"});
  EXPECT_EQ(complete({"completion", ""}), Words{"bash"});
}

TEST_F(BashCompletion, OffersFiles) {
  write("popups with blanks.json", "");
  EXPECT_EQ(complete({"check", "popups"}), Words{"popups with blanks.json"});
}

}  // namespace
}  // namespace zovk
