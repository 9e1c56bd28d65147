#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "GameStandIn.h"
#include "Picture.h"
#include "PopupScreen.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

constexpr int kWindow = PopupScreen::kWindow;
constexpr int kWebView = PopupScreen::kWebView;
const Pixel kClear{0, 0, 0, 0};
const Pixel kPanel{0, 0, 255, 128};
const Pixel kCard{224, 32, 32, 255};
const Pixel kOtherCard{32, 224, 32, 255};

std::vector<std::string> drawnAs(const std::string& way) {
  return {"ZOVKPOPUP_DRAWING=" + way, "GSK_RENDERER", "WEBKIT_SKIA_ENABLE_CPU_RENDERING",
          "LP_NUM_THREADS"};
}

/// Renderers round what they blend.
bool isNearly(const Pixel& found, const Pixel& wanted) {
  return std::equal(found.begin(), found.end(), wanted.begin(),
                    [](int one, int other) { return std::abs(one - other) <= 2; });
}

void expectNearly(const Pixel& found, const Pixel& wanted, const char* what) {
  EXPECT_TRUE(isNearly(found, wanted))
      << what << ": " << found[0] << ' ' << found[1] << ' ' << found[2] << ' ' << found[3];
}

/// A see-through page that fills a clear window, in a helper that draws in one of the ways.
class SeeThrough : public testing::TestWithParam<const char*> {
 protected:
  void open() {
    screen_.createWindow();
    helper_.send({{"type", "window.background"}, {"window", kWindow}, {"color", {0, 0, 0, 0}}});
    screen_.fillWithWebView();
    screen_.show();
    screen_.loadPage("seethrough.html");
  }
  void play() {
    screen_.evaluate("play()");
    helper_.await("web.message", {{"body", "played"}});
  }
  void turn() {
    helper_.await("window.key", {{"window", kWindow}, {"key", true}});
    ASSERT_EQ(runProgram({"xdotool", "getactivewindow", "windowsize", "700", "390"}), 0);
    helper_.await("window.size", {{"window", kWindow}, {"width", 700}, {"height", 390}});
  }
  /// GL hands over a picture as a whole, but after the page has made it.
  void awaitColour(int x, int y, const Pixel& colour) {
    for (int tries = 0; tries < 20; ++tries) {
      taken_ = false;
      if (isNearly(at(x, y), colour)) return;
    }
  }
  Pixel at(int x, int y) {
    const std::string path = (helper_.directory() / "window.png").string();
    if (!taken_) {
      helper_.send({{"type", "snapshot"}, {"id", ++shots_}, {"window", kWindow}, {"path", path}});
      taken_ = helper_.await("snapshot.done", {{"id", shots_}}).at("done").as_bool();
    }
    return taken_ ? pixelAt(path, x, y) : kClear;
  }
  void expectFirstPage(int card) {
    awaitColour(card + 30, 150, kCard);
    expectNearly(at(card + 30, 150), kCard, "the card");
    expectNearly(at(10, 50), kPanel, "the panel where nothing moves");
    expectNearly(at(card + 70, 10), kPanel, "the panel beside the card");
    expectNearly(at(card + 30, 230), kClear, "below the card");
    expectNearly(at(10, 150), kClear, "beside the card");
  }
  void expectNoTrail() {
    expectNearly(at(40, 50), kPanel, "the panel where the card was");
    expectNearly(at(40, 150), kClear, "the clear part where the card was");
    expectNearly(at(100, 150), kClear, "the clear part on the card's way");
  }
  /// Without GL the first picture of a page may still be blended over the page before; the next,
  /// of another size, is not.
  void expectSecondPage() {
    awaitColour(50, 280, kOtherCard);
    awaitColour(50, 150, kClear);
    expectNearly(at(50, 280), kOtherCard, "the card of the second page");
    expectNearly(at(50, 150), kClear, "where the first page had a card");
    expectNearly(at(10, 50), kClear, "where the first page had a panel");
  }

  BlendingManager blending_;
  HelperUnderTest helper_{HelperUnderTest::Start::kGreeted, drawnAs(GetParam())};
  PopupScreen screen_{helper_};

 private:
  int shots_ = 0;
  bool taken_ = false;
};

class MovingSeeThrough : public SeeThrough {};

TEST_P(MovingSeeThrough, PageKeepsItsAlphaOverTenRepaints) {
  open();
  expectFirstPage(20);
  play();
  expectFirstPage(120);
  expectNoTrail();
}

TEST_P(MovingSeeThrough, PageKeepsItsAlphaAfterATurn) {
  open();
  play();
  turn();
  expectFirstPage(120);
  play();
  expectFirstPage(120);
  expectNoTrail();
}

TEST_P(SeeThrough, SecondPageShowsNothingOfTheFirst) {
  open();
  expectFirstPage(20);
  screen_.loadPage("seethrough2.html");
  expectSecondPage();
}

TEST_P(SeeThrough, PageIsRightAfterATurn) {
  open();
  turn();
  expectFirstPage(20);
  screen_.loadPage("seethrough2.html");
  expectSecondPage();
}

INSTANTIATE_TEST_SUITE_P(HelperDrawing, MovingSeeThrough, testing::Values("", "Hardware"));
INSTANTIATE_TEST_SUITE_P(HelperDrawing, SeeThrough, testing::Values("", "hardware", "plain"));

/// Returns the names with that in them of threads of the pages' processes.
std::set<std::string> threadsOfPages(const HelperUnderTest& helper, const char* part) {
  std::set<std::string> names;
  for (const pid_t page : descendantsNamed(helper.pid(), "WebKitWebProces")) {
    const std::string tasks = "/proc/" + std::to_string(page) + "/task";
    for (const auto& task : std::filesystem::directory_iterator(tasks)) {
      std::string name;
      std::getline(std::ifstream(task.path() / "comm"), name);
      if (name.find(part) != std::string::npos) names.insert(name);
    }
  }
  return names;
}

/// Returns whether the page's process composes the page with GL. It has a thread for that.
bool drawsWithGl(const HelperUnderTest& helper) {
  return !threadsOfPages(helper, "Compositor").empty();
}

TEST(HelperDrawing, GoesOnWithoutHardwareInAViewWhoseProcessCrashed) {
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted, drawnAs("hardware"));
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  EXPECT_TRUE(drawsWithGl(helper));
  for (const pid_t page : descendantsNamed(helper.pid(), "WebKitWebProces")) kill(page, SIGKILL);
  helper.await("web.terminated");
  screen.loadPage("plain.html");
  EXPECT_FALSE(drawsWithGl(helper));
}

class SoftwareGl : public SeeThrough {};

TEST_P(SoftwareGl, LeavesHalfOfTheProcessorsToTheGame) {
  open();
  expectFirstPage(20);
  // The driver numbers them, and has them once for drawing and once for computing.
  EXPECT_EQ(threadsOfPages(helper_, "llvmpipe").size(),
            std::max(1U, std::thread::hardware_concurrency() / 2));
}

INSTANTIATE_TEST_SUITE_P(HelperDrawing, SoftwareGl, testing::Values("software"));

TEST(HelperDrawing, CostsPagesThatCoverWhatIsBehindThemNoGlInSoftware) {
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted, drawnAs("software"));
  PopupScreen screen(helper);
  screen.openPage("plain.html");
  EXPECT_TRUE(drawsWithGl(helper)) << "it is see-through";
  helper.send({{"type", "web.close"}, {"view", kWebView}});
  screen.createWebView(true);
  screen.loadPage("plain.html");
  EXPECT_FALSE(drawsWithGl(helper));
}

boost::json::value drawingOf(const std::vector<std::string>& environment, HelperMessage wish,
                             const std::string& line = "") {
  HelperUnderTest helper(HelperUnderTest::Start::kSilent, environment);
  HelperMessage greeting = helper.greeting();
  for (const auto& member : wish) greeting[member.key()] = member.value();
  helper.send(greeting);
  if (!line.empty()) helper.await("log", {{"line", line}});
  return helper.await("ready").at("drawing");
}

TEST(HelperDrawing, IsHardwareWhereTheDriverSaysSoAndNoHelperWasLost) {
  const std::vector<std::string> gpu{"ZOVKPOPUP_DRAWING", "force_gl_renderer=Some GPU"};
  EXPECT_EQ(drawingOf(gpu, {{"drawing", "Look"}}), "hardware");
  EXPECT_EQ(drawingOf(gpu, {{"drawing", "look"}, {"drawingFailed", true}}), "software");
  EXPECT_EQ(drawingOf({"ZOVKPOPUP_DRAWING"}, {{"drawing", "look"}}), "software");
}

TEST(HelperDrawing, IsAsTheRendererThatTheGameKnowsAllows) {
  EXPECT_EQ(drawingOf({"ZOVKPOPUP_DRAWING"}, {{"drawing", "look"}, {"renderer", "Some GPU"}}),
            "hardware");
}

TEST(HelperDrawing, IsThePlayersChoiceBeforeTheGames) {
  EXPECT_EQ(drawingOf(drawnAs("PLAIN"), {{"drawing", "hardware"}}), "plain");
  EXPECT_EQ(drawingOf(drawnAs(""), {{"drawing", "hardware"}, {"drawingFailed", true}},
                      "helper: drawn in software, since the helper before was lost"),
            "software");
  EXPECT_EQ(drawingOf(drawnAs("crayons"), {}, "helper: no way of drawing is called \"crayons\""),
            "software");
}

}  // namespace
}  // namespace zovk
