// Shows one popup after another in one process and looks for what is left over: memory of the
// game and of its helper, processes, descriptors.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include <poll.h>
#include <unistd.h>

#include "Report.h"
#include "fixtures/LocalBundle.h"
#include "fixtures/ProcessFacts.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {
namespace {

constexpr double kToleranceMegabytes = 4;

void pumpUntil(const bool& done) {
  while (!done) {
    pollfd events{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
    poll(&events, 1, 1000);
    ZOVKPopupHost::pump();
  }
}

struct Footprint {
  double game = 0;
  double helper = 0;
  std::size_t processes = 0;
  std::size_t descriptors = 0;
};

Footprint footprint() {
  Footprint now;
  now.game = privateMegabytes(getpid());
  for (const pid_t helper : childrenOf(getpid())) now.helper += privateMegabytes(helper);
  now.processes = descendantsOf(getpid()).size();
  now.descriptors = openDescriptors(getpid());
  return now;
}

void print(int runs, const Footprint& f) {
  std::printf("%6d runs: game %7.2f MB, helper %7.2f MB, %zu processes below, %zu descriptors\n",
              runs, f.game, f.helper, f.processes, f.descriptors);
  std::fflush(stdout);
}

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  using namespace zovk;
  const int runs = argc > 1 ? std::atoi(argv[1]) : 1000;
  const int warmRuns = std::max(runs / 10, 1);
  LocalBundle bundle;
  ScratchDirectory home;
  ZOVKPopupModel page;
  page.scene = "page";
  page.pop_freq = 2;
  bundle.addPage(page, answeringPage("skip", "", true));
  bundle.write();
  ZOVKPopupHostSettings settings;
  settings.applicationId = "zovkpopup-growth";
  settings.resourceDirectory = bundle.resourceDirectory();
  settings.dataDirectory = home.path().string();
  const std::size_t descriptorsBefore = openDescriptors(getpid());
  if (!ZOVKPopupHost::setUp(settings)) return 1;

  Footprint warm;
  Footprint last;
  for (int run = 1; run <= runs; ++run) {
    bool answered = false;
    ZOVKPopup::showPopup("page", 0, [&](std::int32_t code, const std::string& message) {
      if (code != 0) std::printf("run %d ended with %d %s\n", run, code, message.c_str());
      answered = true;
    });
    pumpUntil(answered);
    if (run % warmRuns == 0 || run == runs) print(run, last = footprint());
    if (run == warmRuns) warm = last;
  }
  ZOVKPopupHost::shutDown();
  const std::size_t left = descendantsOf(getpid()).size();
  const std::size_t descriptorsAfter = openDescriptors(getpid());
  const std::string after = ", after the first " + std::to_string(warmRuns);
  Report report;
  report.add({.text = "growth of the game" + after,
              .figure = last.game - warm.game,
              .unit = "MB",
              .bound = kToleranceMegabytes});
  report.add({.text = "growth of the helper" + after,
              .figure = last.helper - warm.helper,
              .unit = "MB",
              .bound = kToleranceMegabytes});
  report.add({.text = "processes left behind", .figure = static_cast<double>(left)});
  report.add(
      {.text = "descriptors left behind",
       .figure = static_cast<double>(descriptorsAfter) - static_cast<double>(descriptorsBefore)});
  return report.finish();
}
