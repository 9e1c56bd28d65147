// What opening a popup costs a game: the show call, the worst frame, and the time until the page
// has loaded, each against its floor in the same run.
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include <sys/wait.h>
#include <unistd.h>

#include "PopupGame.h"
#include "Report.h"
#include "fixtures/LocalBundle.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"

namespace zovk {
namespace {

constexpr int kFramesAfterLoading = 10;  // until what was loaded is on the screen
constexpr const char* kWorstFrame = "worst frame while a popup opens, over the floor";
constexpr double kWorstFrameBound = 4;
// An answer given while the page loads would close it before it has loaded.
constexpr const char* kAnswerAfterLoading =
    "<script>addEventListener('load', () => setTimeout(answer, 250))</script>";

struct Measurement {
  std::vector<double> showCall;
  std::vector<double> worstFrame;
  std::vector<double> worstClosingFrame;
  std::vector<double> worstFloorFrame;
  std::vector<double> showToLoaded;
  std::vector<double> bareToLoaded;
};

// Milliseconds until the single-process program has loaded the page, its start included.
double openBare(const std::string& program, const std::string& page) {
  const auto start = std::chrono::steady_clock::now();
  FILE* const output = popen((program + " 'file://" + page + "' 2>/dev/null").c_str(), "r");
  std::array<char, 64> line{};
  const bool loaded = output != nullptr && std::fgets(line.data(), line.size(), output) != nullptr;
  const Milliseconds time = std::chrono::steady_clock::now() - start;
  if (output != nullptr) pclose(output);
  if (!loaded) {
    std::fprintf(stderr, "%s did not load %s\n", program.c_str(), page.c_str());
    std::exit(1);
  }
  return time.count();
}

class Opening {
 public:
  explicit Opening(PopupGame& game) : game_(game.loop), loaded_(game.loaded) {}

  void run(Measurement& m) {
    loaded_.reset();
    bool answered = false;
    const auto start = std::chrono::steady_clock::now();
    ZOVKPopup::showPopup("page", 0, [&](std::int32_t, const std::string&) { answered = true; });
    m.showCall.push_back(Milliseconds(std::chrono::steady_clock::now() - start).count());
    auto frames = game_.runUntil([&] { return loaded_.has_value(); });
    m.showToLoaded.push_back(Milliseconds(*loaded_ - start).count());
    const auto shown = game_.runFrames(kFramesAfterLoading);
    frames.insert(frames.end(), shown.begin(), shown.end());
    m.worstFrame.push_back(largestOf(frames));
    game_.runUntil([&] { return answered; });
    m.worstClosingFrame.push_back(largestOf(game_.runFrames(kFramesAfterLoading)));
    // The same number of frames as it opened in, with nothing on screen.
    game_.runFrames(60);
    m.worstFloorFrame.push_back(largestOf(game_.runFrames(static_cast<int>(frames.size()))));
  }

 private:
  GameLoop& game_;
  std::optional<std::chrono::steady_clock::time_point>& loaded_;
};

int reportAll(const Measurement& m) {
  Report report;
  const double frame = medianOf(m.worstFrame) - medianOf(m.worstFloorFrame);
  const double loaded = medianOf(m.showToLoaded);
  const double bare = medianOf(m.bareToLoaded);
  report.add({.text = "the show call on the game's thread, median",
              .figure = medianOf(m.showCall),
              .unit = "ms",
              .bound = 1});
  report.add({.text = kWorstFrame, .figure = frame, .unit = "ms", .bound = kWorstFrameBound});
  report.add({.text = "show to loaded, helper warm / bare program, cold",
              .figure = loaded / bare,
              .unit = "x",
              .bound = 0.6});
  report.tell("show to loaded, median", loaded, "ms");
  report.tell("bare program to loaded, cold, median", bare, "ms");
  report.tell("slowest show call", largestOf(m.showCall), "ms");
  report.tell("worst frame while a popup opens, median", medianOf(m.worstFrame), "ms");
  report.tell("worst of as many frames with none, median", medianOf(m.worstFloorFrame), "ms");
  report.tell("worst frame while a popup closes, median", medianOf(m.worstClosingFrame), "ms");
  report.keep("worst frame while a popup opens", m.worstFrame);
  report.keep("worst of as many frames with none", m.worstFloorFrame);
  return report.finish();
}

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  using namespace zovk;
  const int openings = argc > 1 ? std::atoi(argv[1]) : 21;
  const std::string bare =
      (std::filesystem::path(argv[0]).parent_path() / "zovkpopup-bare-webkit").string();
  PopupGame game(answeringPage("skip", "", false) + kAnswerAfterLoading);
  if (!game.start()) return 1;

  Measurement measurement;
  Opening opening(game);
  opening.run(measurement);
  measurement = {};  // the first opening of a process is not counted as a warm one
  for (int i = 0; i < openings; ++i) opening.run(measurement);
  // Not in between: a program that ends keeps the processors busy for a while.
  for (int i = 0; i < openings; ++i) {
    measurement.bareToLoaded.push_back(openBare(bare, game.pagePath));
  }
  ZOVKPopupHost::shutDown();
  return reportAll(measurement);
}
