#include <array>
#include <set>

#include "ProgramRun.h"

namespace zovk {
namespace {

using Words = std::vector<std::string>;

// Returns the options of a command, as its help has them.
Words optionsOf(const std::vector<std::string>& program) {
  std::vector<std::string> asked = program;
  asked.emplace_back("--help");
  const std::string help = runProgram(asked).out;
  Words result;
  for (std::size_t at = help.find("--"); at != std::string::npos; at = help.find("--", at + 2)) {
    if (help[at - 1] != ' ' && help[at - 1] != ',') continue;
    result.push_back(help.substr(at, help.find_first_of(" ,\n", at) - at));
  }
  return result;
}

// bash itself completes a line with the script that the tool prints.
class BashCompletion : public ToolTest {
 protected:
  std::vector<std::string> complete(const std::vector<std::string>& words) const {
    return complete(runTool({"completion", "bash"}).out, "_zovkpopup", words);
  }
  std::vector<std::string> completeService(const std::vector<std::string>& words) const {
    return complete(read(ZOVKPOPUP_SERVICE_COMPLETION "/zovkpopup-service.bash"),
                    "_zovkpopup_service", words);
  }

 private:
  std::vector<std::string> complete(const std::string& text, const std::string& function,
                                    const std::vector<std::string>& words) const {
    const std::string script = write(".completion", text);
    std::string program = "cd '" + path("") + "'; . '" + script + "'; COMP_WORDS=(program";
    for (const std::string& word : words) program += " '" + word + "'";
    program += "); COMP_CWORD=" + std::to_string(words.size()) + "; " + function +
               "; printf '%s\\n' \"${COMPREPLY[@]}\"";
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
  EXPECT_EQ(complete({"check", "x", "--as", ""}),
            (Words{"remote", "service", "site", "local", "bundle"}));
  EXPECT_EQ(complete({"preview", "x", "--kind", "p"}), (Words{"policy", "permission"}));
  EXPECT_EQ(complete({"preview", "x", "--kind", ""}),
            (Words{"ordinary", "game", "policy", "permission"}));
  EXPECT_EQ(complete({"preview", "x", "--theme", ""}), (Words{"light", "dark", "high-contrast"}));
  EXPECT_EQ(complete({"preview", "x", "--scale", ""}), (Words{"1", "2", "3", "4"}));
  EXPECT_EQ(complete({"new", "x", "--template", ""}),
            (Words{"announcement", "event", "reward", "survey", "policy"}));
  EXPECT_EQ(complete({"explain", "x", "--scene", ""}), Words{""}) << "only the author knows it";
  EXPECT_EQ(complete({"completion", ""}), (Words{"bash", "zsh", "fish"}));
}

TEST_F(BashCompletion, OffersFiles) {
  write("popups with blanks.json", "");
  for (const char* command : {"sig", "check", "explain", "publish", "preview"}) {
    EXPECT_EQ(complete({command, "popups"}), Words{"popups with blanks.json"}) << command;
  }
  for (const char* option : {"--screenshot", "--matrix"}) {
    EXPECT_EQ(complete({"preview", "x", option, "popups"}), Words{"popups with blanks.json"});
  }
}

TEST_F(BashCompletion, OffersFoldersWhereOnlyFoldersCanStand) {
  write("pages.json", "");
  std::filesystem::create_directory(path("pages here"));
  for (const char* option : {"--pages", "--folder", "--lasting", "--record"}) {
    EXPECT_EQ(complete({"publish", "x", option, "pages"}), Words{"pages here"}) << option;
  }
}

TEST_F(BashCompletion, OffersWhatTheServiceTakes) {
  write("site.json", "");
  std::filesystem::create_directory(path("site"));
  EXPECT_EQ(completeService({"si"}), Words{"site"});
  EXPECT_EQ(completeService({"site", "--reports", "site."}), Words{"site.json"});
  EXPECT_EQ(completeService({"site", "--certificate-out", "site."}), Words{"site.json"});
  EXPECT_EQ(completeService({"site", "--port", ""}), Words{""});
  const Words offered = completeService({"--"});
  const Words options = optionsOf({ZOVKPOPUP_SERVICE});
  // The help names some more than once.
  EXPECT_EQ(std::set(offered.begin(), offered.end()), std::set(options.begin(), options.end()));
}

constexpr std::array kCommands = {"sig", "check", "explain", "publish", "new", "preview"};

// The other shells complete a line by themselves, with their own scripts.
class OtherShells : public ToolTest {
 protected:
  void SetUp() override {
    const std::string tool = ZOVKPOPUP_TOOL;
    write("_zovkpopup", runTool({"completion", "zsh"}).out);
    write("zovkpopup.fish", runTool({"completion", "fish"}).out);
    const std::string service = ZOVKPOPUP_SERVICE_COMPLETION;
    write("_zovkpopup-service", read(service + "/_zovkpopup-service"));
    write("zovkpopup-service.fish", read(service + "/zovkpopup-service.fish"));
  }
  std::string fish(const std::string& line) const {
    const ProgramRun run = runProgram(
        {"/usr/bin/env", "HOME=" + path(""), "fish", "--no-config", "-c",
         "source " + path("zovkpopup.fish") + "; source " + path("zovkpopup-service.fish") +
             "; cd " + path("") + "; complete -C '" + line + "'"});
    EXPECT_EQ(run.code, 0);
    EXPECT_EQ(run.err, "");
    return run.out;
  }
  // zsh completes for a person at a terminal only. Here it runs the script with stand-ins for what
  // would ask that person, which print what they are given.
  std::string zsh(const std::string& script, const std::string& words,
                  const std::string& state = "argument") const {
    const std::string standIns =
        "compdef() { : }; _describe() { eval print -rl -- '\"${'$4'[@]}\"' }; "
        "_arguments() { if [[ $1 == -C ]] { state=" +
        state + "; return 1 }; print -rl -- \"$@\" }; ";
    const ProgramRun run =
        runProgram({"/usr/bin/zsh", "-f", "-c",
                    standIns + "words=(" + words + "); CURRENT=$#words; fpath=(" + folder() +
                        "); autoload -Uz " + script + "; " + script});
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(run.err, "");
    return run.out;
  }
  std::string folder() const { return std::filesystem::path(path("x")).parent_path().string(); }
};

TEST_F(OtherShells, FishOffersEveryOptionAndTheValues) {
  for (const char* command : kCommands) {
    const std::string offered = "\n" + fish(std::string("zovkpopup ") + command + " --");
    for (const std::string& option : optionsOf({ZOVKPOPUP_TOOL, command})) {
      EXPECT_NE(offered.find("\n" + option + "\t"), std::string::npos) << command << option;
    }
  }
  EXPECT_EQ(fish("zovkpopup c"),
            "check\tChecks a document and its pages\n"
            "completion\tPrints a script like this one\n");
  EXPECT_EQ(fish("zovkpopup check x --as s"),
            "service\tWhich document it is\n"
            "site\tWhich document it is\n");
  const std::string offered = "\n" + fish("zovkpopup-service --");
  for (const std::string& option : optionsOf({ZOVKPOPUP_SERVICE})) {
    EXPECT_NE(offered.find("\n" + option + "\t"), std::string::npos) << option;
  }
}

TEST_F(OtherShells, ZshOffersEveryOptionAndTheValues) {
  const std::string commands = zsh("_zovkpopup", "zovkpopup", "command");
  for (const char* command : kCommands) {
    EXPECT_NE(commands.find(std::string(command) + ":"), std::string::npos) << commands;
    const std::string offered = "\n" + zsh("_zovkpopup", command);
    for (const std::string& option : optionsOf({ZOVKPOPUP_TOOL, command})) {
      EXPECT_NE(offered.find("\n" + option + "["), std::string::npos)
          << command << option << offered;
    }
  }
  EXPECT_NE(zsh("_zovkpopup", "check").find("(remote service site local bundle)"),
            std::string::npos);
  const std::string offered = zsh("_zovkpopup-service", "zovkpopup-service");
  for (const std::string& option : optionsOf({ZOVKPOPUP_SERVICE})) {
    EXPECT_NE(offered.find(option + "["), std::string::npos) << option << offered;
  }
}

}  // namespace
}  // namespace zovk
