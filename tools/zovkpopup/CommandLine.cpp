#include "zovkpopup/CommandLine.h"

#include <algorithm>
#include <functional>

#include <CLI/CLI.hpp>

#include "support/Version.h"
#include "zovkpopup/Commands.h"
#include "zovkpopup/Spelling.h"
#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

/// The options of all commands, and what to run once they are read.
struct CommandLine {
  CLI::App app{"Makes, checks, explains and shows in-app popups", "zovkpopup"};
  SigOptions sig;
  CheckOptions check;
  ExplainOptions explain;
  PublishOptions publish;
  NewOptions starter;
  PreviewOptions preview;
  std::string shell;
  std::function<int()> run;
};

void addSig(CommandLine& line) {
  auto* const command = line.app.add_subcommand(
      "sig", "Prints the \"sig\" of a page file, or of the address of a web page");
  command->add_option("target", line.sig.target, "A page file, or an address with ://")->required();
  command->add_flag("--json", line.sig.json, "JSON for scripts");
  command->callback([&line] { line.run = [&line] { return runSig(line.sig); }; });
}

void addDocument(CLI::App* command, DocumentOptions& document) {
  command->add_option("document", document.file, "A configuration document")->required();
  command->add_option("--pages", document.pages,
                      "The folder with the page files; default: that of the document");
  command
      ->add_option(
          "--as", document.as,
          "Which document it is: remote, or site for one that a service hands out, where a past "
          "expire_time takes a popup back; service for the development service's; local, or bundle "
          "for one in a game; default: "
          "local for ZOVKPopupLocal.config, else remote")
      ->check(CLI::IsMember({"remote", "service", "site", "local", "bundle"}));
  command->add_option(
      "--at", document.at,
      "The time to judge at: seconds since 1970, or YYYY-MM-DD[THH:MM[:SS]] in UTC; "
      "default: now");
  command->add_flag("--json", document.json, "JSON for scripts");
}

void addCheck(CommandLine& line) {
  auto* const command = line.app.add_subcommand(
      "check", "Checks a configuration document against its pages; exit code 1 for errors");
  addDocument(command, line.check.document);
  command->add_flag("--strict", line.check.strict, "Warnings count as errors");
  command->add_flag("--fix", line.check.fix, "Puts digests and names of page files right before");
  command->callback([&line] { line.run = [&line] { return runCheck(line.check); }; });
}

void addExplain(CommandLine& line) {
  auto* const command = line.app.add_subcommand(
      "explain", "Tells which popups a game would show, and why not the others");
  addDocument(command, line.explain.document);
  auto* const what = command->add_option_group("request", "What the game asks for");
  what->add_option("--scene", line.explain.scene, "A scene, as for showPopup");
  what->add_option("--scene-type", line.explain.sceneType, "A scene type, as for havePopup");
  what->require_option(1);
  command->add_option("--channel", line.explain.channel, "The player's login channel")
      ->capture_default_str();
  command->callback([&line] { line.run = [&line] { return runExplain(line.explain); }; });
}

void addPublish(CommandLine& line) {
  auto* const command = line.app.add_subcommand(
      "publish", "Checks a configuration document and puts it live with its pages");
  PublishOptions& options = line.publish;
  command->add_option("document", options.document.file, "A configuration document")->required();
  command
      ->add_option("--to", options.to,
                   "The site: a folder, ssh:HOST:FOLDER, or command: and a command line that "
                   "stores {file} as {key}, with {type} and {cache}")
      ->required();
  command->add_option("--pages", options.document.pages,
                      "The folder with the page files; default: that of the document");
  command->add_option("--base", options.base,
                      "The site's address, as https://popups.example; default: that of each page");
  command->add_option("--lasting", options.lasting,
                      "A folder of files, such as web pages, that are reached under /pages/NAME");
  command->add_option("--record", options.record,
                      "The folder of what was published; default: published, beside the document");
  command->add_flag("--strict", options.strict, "Warnings count as errors");
  command->add_flag("--rollback", options.rollback,
                    "Puts live again what was before; repeated, what was before that");
  command->callback([&line] { line.run = [&line] { return runPublish(line.publish); }; });
}

void addNew(CommandLine& line) {
  auto* const command = line.app.add_subcommand(
      "new", "Writes a page to start from, NAME.html, and its document, NAME.json");
  command->add_option("name", line.starter.name, "Name of the page and of its scene")
      ->capture_default_str();
  command->add_option("--folder", line.starter.folder, "Where to write")->capture_default_str();
  command->add_option("--template", line.starter.page, "Which page to start from")
      ->check(CLI::IsMember({"announcement", "event", "reward", "survey", "policy"}))
      ->capture_default_str();
  command->add_flag("--force", line.starter.force, "Replaces files that are there");
  command->callback([&line] { line.run = [&line] { return runNew(line.starter); }; });
}

void addPreview(CommandLine& line) {
  auto* const command = line.app.add_subcommand(
      "preview", "Shows a page as a popup and prints what the game would be told");
  PreviewOptions& options = line.preview;
  command->add_option("target", options.target, "A page file, or an address with ://")->required();
  command->add_option("--kind", options.kind, "Which buttons come with the page; default: ordinary")
      ->check(CLI::IsMember({"ordinary", "game", "policy", "permission"}));
  command->add_option("--size", options.size,
                      "WIDTHxHEIGHT of the popup; default: the whole screen");
  command->add_option("--theme", options.theme, "Default: as the desktop has it")
      ->check(CLI::IsMember({"light", "dark", "high-contrast"}));
  command->add_option("--scale", options.scale, "Pixels for each point; default: as the desktop")
      ->check(CLI::Range(1, 4));
  command->add_option("--screenshot", options.screenshot,
                      "Writes a PNG of the popup once its page has loaded, and ends");
  command->add_option(
      "--matrix", options.matrix,
      "Writes an HTML sheet with pictures in all sizes, themes and kinds, but for what is given");
  command->add_flag(
      "--watch", options.watch,
      "Loads the page again when it is saved; keys: t theme, s size, k kind, r reload, q quit");
  command->add_flag("--json", options.json, "JSON for scripts");
  command->callback([&line] { line.run = [&line] { return runPreview(line.preview); }; });
}

void addCompletion(CommandLine& line) {
  auto* const command =
      line.app.add_subcommand("completion", "Prints a script that completes command lines");
  command
      ->add_option("shell", line.shell, "For bash and zsh: eval \"$(zovkpopup completion bash)\"")
      ->required()
      ->check(CLI::IsMember({"bash", "zsh", "fish"}));
  command->callback([&line] { line.run = [&line] { return runCompletion(line.shell); }; });
}

/// " Is … meant?" for a word that is nearly a command.
std::string meantCommand(CLI::App& app, int argc, const char* const* argv) {
  if (argc < 2 || argv[1][0] == '-') return "";
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands([](CLI::App*) { return true; })) {
    names.push_back(command->get_name());
  }
  const std::vector<std::string_view> known(names.begin(), names.end());
  if (std::find(known.begin(), known.end(), argv[1]) != known.end()) return "";
  const std::string near(nearestWord(argv[1], known));
  return std::string(argv[1]) + ": is no command" +
         (near.empty() ? "" : "; is " + near + " meant?");
}

int reported(const char* message, int code) {
  std::fprintf(stderr, "zovkpopup: %s\n", message);
  return code;
}

}  // namespace

int runCommandLine(int argc, const char* const* argv) {
  CommandLine line;
  line.app.set_version_flag("--version", std::string("zovkpopup ") + kPopupVersion);
  line.app.require_subcommand(1);
  for (const auto add :
       {addSig, addCheck, addExplain, addPublish, addNew, addPreview, addCompletion}) {
    add(line);
  }
  try {
    const std::string wrong = meantCommand(line.app, argc, argv);
    if (!wrong.empty()) return reported(wrong.c_str(), kUsage);
    line.app.parse(argc, argv);
    const int code = line.run();
    return std::fflush(stdout) == 0 ? code
                                    : reported("standard output: cannot be written", kInputOutput);
  } catch (const CLI::ParseError& error) {
    return line.app.exit(error) == 0 ? kSuccess : kUsage;
  } catch (const ToolError& error) {
    return reported(error.what(), error.code());
  } catch (const std::exception& error) {
    return reported(error.what(), kFault);
  }
}

}  // namespace zovk::tool
