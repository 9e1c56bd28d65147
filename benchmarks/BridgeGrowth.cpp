// Sends messages over the bridge, half of them calls and half of them answers, half of either from
// the page, and looks for what is left over of them in the game, the helper and the page's process.
// The engine itself keeps something of every navigation that is cancelled, most of those that were
// overtaken by the next, until the page's process ends. Signals are such navigations: the helper
// may grow by no more than a bare program that cancels them, and only until the window closes.
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

#include "BridgeGame.h"
#include "Report.h"
#include "fixtures/ChildProcess.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

constexpr int kInFlight = 64;
constexpr int kPart = 25'000;  // calls of either side before the next look
constexpr int kBareSignals = 20'000;
constexpr int kMessagesOfPart = 4 * kPart;
constexpr double kToleranceMegabytes = 4;
constexpr double kPageToleranceMegabytes = 8;  // its engine's collector comes and goes

struct Footprint {
  double game = 0;
  double helper = 0;
  double page = 0;
};

bool isPageProcess(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/comm");
  std::string name;
  return std::getline(file, name) && name.starts_with("WebKitWebProces");
}

Footprint footprint() {
  Footprint now;
  now.game = privateMegabytes(getpid());
  for (const pid_t helper : childrenOf(getpid())) now.helper += privateMegabytes(helper);
  for (const pid_t process : descendantsOf(getpid())) {
    if (isPageProcess(process)) now.page += privateMegabytes(process);
  }
  return now;
}

void sendPart(BridgeGame& game) {
  game.callsFromPage(kPart, kInFlight);
  game.callsFromGame(kPart, kInFlight);
}

void print(int messages, const Footprint& f) {
  std::printf("%8d messages: game %7.2f MB, helper %7.2f MB, pages %7.2f MB\n", messages, f.game,
              f.helper, f.page);
  std::fflush(stdout);
}

/// Returns by how many bytes a bare program grows with every signal.
double bareGrowth(const std::filesystem::path& program, const std::string& kind) {
  ChildProcess bare({program.string(), kind, std::to_string(kBareSignals)}, "/dev/null");
  double milliseconds = 0;
  double bytes = 0;
  const auto line = bare.nextLine();
  if (!line || std::sscanf(line->c_str(), "%lf %lf", &milliseconds, &bytes) != 2) {
    std::fprintf(stderr, "the bare program failed\n");
    std::exit(1);
  }
  return bytes;
}

struct Growth {
  Footprint warm;
  Footprint last;
  Footprint closed;
  int messages = 0;
  double bareLone = 0;
  double bareOvertaken = 0;
};

int report(const Growth& growth) {
  const double game = growth.last.game - growth.warm.game;
  const double page = growth.last.page - growth.warm.page;
  const double bytes = (growth.last.helper - growth.warm.helper) * 1e6 / growth.messages;
  const double left = growth.closed.helper - growth.warm.helper;
  Report report;
  report.add({.text = "growth of the game over all messages",
              .figure = game,
              .unit = "MB",
              .bound = kToleranceMegabytes});
  report.add({.text = "growth of the page's process over all messages",
              .figure = page,
              .unit = "MB",
              .bound = kPageToleranceMegabytes});
  report.add({.text = "growth of the helper a message / bare program an overtaken signal",
              .figure = bytes / growth.bareOvertaken,
              .unit = "x",
              .bound = 1});
  report.add({.text = "growth of the helper once the window is closed",
              .figure = left,
              .unit = "MB",
              .bound = kToleranceMegabytes});
  report.tell("growth of the helper a message", bytes, "bytes");
  report.tell("growth of the bare program a signal", growth.bareLone, "bytes");
  report.tell("growth of the bare program an overtaken signal", growth.bareOvertaken, "bytes");
  return report.finish();
}

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  using namespace zovk;
  const int messages = argc > 1 ? std::atoi(argv[1]) : 1'000'000;
  const auto bare = std::filesystem::path(argv[0]).replace_filename("zovkpopup-bare-bridge");
  Growth growth;
  growth.bareLone = bareGrowth(bare, "signal");
  growth.bareOvertaken = bareGrowth(bare, "overtaken");
  BridgeGame game;
  sendPart(game);
  print(0, growth.warm = footprint());
  while (growth.messages < messages) {
    sendPart(game);
    growth.messages += kMessagesOfPart;
    print(growth.messages, growth.last = footprint());
  }
  game.closeWindow();
  growth.closed = footprint();
  return report(growth);
}
