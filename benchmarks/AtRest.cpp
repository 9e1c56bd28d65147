// What the library costs a game while nothing is shown: the memory of the helper and of the
// processes below it once it rests, what wakes the game's process then, and what is left after the
// helper has ended.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
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

using Clock = std::chrono::steady_clock;

constexpr std::uint32_t kReadySeconds = 5;
/// The web engine gives up the last of what it keeps for pages by and by.
constexpr std::chrono::seconds kUntilItHasCalmedDown{55};
constexpr std::chrono::minutes kUntilTheHelperEnds{10};
constexpr double kMostMegabytes = 30;

/// Sleeps until the library wants to be pumped. Returns how often it did.
int rest(
    std::chrono::seconds time, const std::function<bool()>& over = [] { return false; }) {
  const auto end = Clock::now() + time;
  int pumps = 0;
  while (Clock::now() < end && !over()) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - Clock::now());
    pollfd events{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
    if (poll(&events, 1, static_cast<int>(left.count())) == 0) break;
    ZOVKPopupHost::pump();
    ++pumps;
  }
  return pumps;
}

/// How often the threads of the library in this process have gone to sleep, and so were woken.
long sleepsOfOtherThreads() {
  long sleeps = 0;
  for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
    if (thread.path().filename() == std::to_string(getpid())) continue;
    std::ifstream file(thread.path() / "status");
    for (std::string line; std::getline(file, line);) {
      long count = 0;
      if (std::sscanf(line.c_str(), "voluntary_ctxt_switches: %ld", &count) == 1) sleeps += count;
    }
  }
  return sleeps;
}

double megabytesBelow() {
  double sum = 0;
  for (const pid_t process : descendantsOf(getpid())) sum += privateMegabytes(process);
  return sum;
}

/// Returns how long the popup took to be shown and to answer, in milliseconds.
double showOnce() {
  bool answered = false;
  const auto start = Clock::now();
  ZOVKPopup::showPopup("page", 0, [&](std::int32_t, const std::string&) { answered = true; });
  rest(std::chrono::seconds(60), [&] { return answered; });
  return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

void listProcesses() {
  for (const pid_t process : descendantsOf(getpid())) {
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
    std::printf("  %-16s %6.1f MB\n", name.c_str(), privateMegabytes(process));
  }
}

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  using namespace zovk;
  const std::chrono::seconds watched(argc > 1 ? std::atoi(argv[1]) : 60);
  const bool untilTheEnd = argc > 2 && std::string(argv[2]) == "end";
  LocalBundle bundle;
  ScratchDirectory home;
  ZOVKPopupModel page;
  page.scene = "page";
  page.pop_freq = 2;
  bundle.addPage(page, answeringPage("skip", "", true));
  bundle.write();
  ZOVKPopupHostSettings settings;
  settings.applicationId = "zovkpopup-rest";
  settings.resourceDirectory = bundle.resourceDirectory();
  settings.dataDirectory = home.path().string();
  settings.readySeconds = kReadySeconds;
  if (!ZOVKPopupHost::setUp(settings)) return 1;
  showOnce();
  rest(std::chrono::seconds(kReadySeconds / 2));
  Report report;
  report.tell("show to answer, helper ready", showOnce(), "ms");
  report.tell("helper and processes below, just after a popup", megabytesBelow(), "MB");
  rest(std::chrono::seconds(kReadySeconds) + kUntilItHasCalmedDown);
  listProcesses();
  report.add({.text = "helper and processes below, at rest",
              .figure = megabytesBelow(),
              .unit = "MB",
              .bound = kMostMegabytes});

  const auto start = Clock::now();
  const long sleeps = sleepsOfOtherThreads();
  const int pumps = rest(watched);
  const double minutes = std::chrono::duration<double>(Clock::now() - start).count() / 60;
  report.add({.text = "wake-ups of the game by the library, at rest",
              .figure = (pumps + static_cast<double>(sleepsOfOtherThreads() - sleeps)) / minutes,
              .unit = "a minute"});
  report.tell("show to answer, helper at rest", showOnce(), "ms");
  if (untilTheEnd) {
    rest(kUntilItHasCalmedDown + kUntilTheHelperEnds);
    report.add({.text = "processes of the library eleven minutes after a popup",
                .figure = static_cast<double>(descendantsOf(getpid()).size())});
  }
  ZOVKPopupHost::shutDown();
  return report.finish();
}
