// What the library adds to a game: bytes on disk, milliseconds of the main thread before the first
// popup can be asked for, and megabytes before, during and after a popup.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>

#include <unistd.h>

#include "Report.h"
#include "Statistics.h"
#include "fixtures/LocalBundle.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

constexpr int kRuns = 21;
constexpr int kDefinitions = 100;
constexpr double kStartBound = 10;

ZOVKPopupModel popup(const std::string& scene, std::uint64_t sceneType) {
  ZOVKPopupModel model;
  model.scene = scene;
  model.scene_type = sceneType;
  model.pop_freq = 2;
  return model;
}

// Pages of the size that popups have, at ten moments of the game. The one that is shown answers
// when it has been looked at.
void fill(LocalBundle& bundle) {
  const std::string text(20'000, 'x');
  for (int i = 1; i < kDefinitions; ++i) {
    bundle.addPage(popup("scene" + std::to_string(i), static_cast<std::uint64_t>(i) % 10),
                   "<p>" + std::to_string(i) + "</p><p>" + text + "</p>");
  }
  bundle.addPage(popup("shown", 1),
                 "<h1>A page</h1><script>setTimeout(() => window.webkit.messageHandlers.ZOVKPopup"
                 ".postMessage('{\"action\":\"skip\"}'), 5000)</script>");
  bundle.write();
}

double strippedMegabytes(const std::filesystem::path& library, const ScratchDirectory& scratch) {
  const std::string copy = (scratch.path() / "stripped.so").string();
  const std::string command = "strip -o '" + copy + "' '" + library.string() + "'";
  if (std::system(command.c_str()) != 0) std::exit(1);
  return static_cast<double>(std::filesystem::file_size(copy)) / 1e6;
}

struct Start {
  std::vector<double> load, setUp, firstCall, whole, work;
};

using Pipe = std::unique_ptr<FILE, int (*)(FILE*)>;

Start measureStarts(const std::string& command) {
  Start start;
  for (int run = 0; run < kRuns; ++run) {
    const Pipe output(popen(command.c_str(), "r"), pclose);
    double load = 0;
    double setUp = 0;
    double call = 0;
    double work = 0;
    if (std::fscanf(output.get(), "%lf %lf %lf %lf", &load, &setUp, &call, &work) != 4) {
      std::exit(1);
    }
    if (run == 0) continue;  // the files are read from disk
    start.load.push_back(load);
    start.setUp.push_back(setUp);
    start.firstCall.push_back(call);
    start.whole.push_back(load + setUp + call);
    start.work.push_back(work);
  }
  return start;
}

// The game is the child of the shell that `popen` starts, and the helper is the game's.
void tellMemory(const std::string& phase, pid_t game) {
  double helper = 0;
  double pages = 0;
  for (const pid_t child : childrenOf(game)) {
    helper += privateMegabytes(child);
    for (const pid_t page : descendantsOf(child)) pages += privateMegabytes(page);
  }
  std::printf("  %-8s game %6.2f MB, helper %6.2f MB, WebKit's processes %6.2f MB\n", phase.c_str(),
              privateMegabytes(game), helper, pages);
  std::fflush(stdout);
}

void measureMemory(const std::string& program, const std::vector<std::string>& words) {
  std::array<int, 2> toGame{};
  std::array<int, 2> fromGame{};
  if (pipe(toGame.data()) != 0 || pipe(fromGame.data()) != 0) std::exit(1);
  const pid_t game = fork();
  if (game == 0) {
    dup2(toGame[0], STDIN_FILENO);
    dup2(fromGame[1], STDOUT_FILENO);
    for (const int end : {toGame[0], toGame[1], fromGame[0], fromGame[1]}) close(end);
    execl(program.c_str(), program.c_str(), words[0].c_str(), words[1].c_str(), words[2].c_str(),
          "shown", static_cast<char*>(nullptr));
    _exit(127);
  }
  close(toGame[0]);
  close(fromGame[1]);
  const std::unique_ptr<FILE, int (*)(FILE*)> output(fdopen(fromGame[0], "r"), std::fclose);
  std::array<char, 80> line{};
  while (std::fgets(line.data(), line.size(), output.get()) != nullptr) {
    std::string phase(line.data());
    phase.pop_back();
    tellMemory(phase, game);
    if (write(toGame[1], "\n", 1) != 1) std::exit(1);
  }
  close(toGame[1]);
}

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  using namespace zovk;
  if (argc != 3) {
    std::fprintf(stderr, "usage: %s LIBRARY GAME\n", argv[0]);
    return 2;
  }
  const std::string library = std::filesystem::absolute(argv[1]).string();
  const std::string game = std::filesystem::absolute(argv[2]).string();
  LocalBundle bundle;
  ScratchDirectory home;
  fill(bundle);

  Report report;
  const Start start =
      measureStarts("'" + game + "' '" + library + "' '" + bundle.resourceDirectory() + "' '" +
                    home.path().string() + "'");
  report.add({.text = "load, set-up and first call, median",
              .figure = medianOf(start.whole),
              .unit = "ms",
              .bound = kStartBound});
  report.tell("load, median", medianOf(start.load), "ms");
  report.tell("set-up, median", medianOf(start.setUp), "ms");
  report.tell("first call, median", medianOf(start.firstCall), "ms");
  report.tell("processor time of the main thread, median", medianOf(start.work), "ms");
  report.tell("the library, stripped", strippedMegabytes(library, home), "MB");
  report.keep("load, set-up and first call", start.whole);
  std::printf("memory of their own:\n");
  // The game goes by the log to know when the page is there.
  std::ofstream(bundle.resourceDirectory() + "/Info.json") << R"({"ZOVK_DEBUG": true})";
  measureMemory(game, {library, bundle.resourceDirectory(), home.path().string()});
  return report.finish();
}
