#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include "GameStandIn.h"
#include "Picture.h"
#include "PopupScreen.h"
#include "support/UniqueFd.h"

namespace zovk {
namespace {

constexpr int kWindow = PopupScreen::kWindow;
constexpr int kSeals = F_SEAL_WRITE | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL;
const Pixel kLeftColour{200, 40, 20, 255};
const Pixel kRightColour{20, 160, 60, 255};
const Pixel kCard{224, 32, 32, 255};

UniqueFd memoryOf(const std::string& bytes, int seals = kSeals) {
  UniqueFd file(memfd_create("test-backdrop", MFD_CLOEXEC | MFD_ALLOW_SEALING));
  EXPECT_EQ(write(file.get(), bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  EXPECT_EQ(fcntl(file.get(), F_ADD_SEALS, seals), 0);
  return file;
}

/// Rows of two halves, each of one colour.
std::string halves(int width, int height) {
  std::string bytes;
  for (int i = 0; i < width * height; ++i) {
    const Pixel& colour = i % width < width / 2 ? kLeftColour : kRightColour;
    for (const std::size_t part : {2U, 1U, 0U, 3U}) bytes += static_cast<char>(colour[part]);
  }
  return bytes;
}

HelperMessage backdrop(std::int64_t width, std::int64_t height) {
  return {{"type", "backdrop"}, {"width", width}, {"height", height}};
}

/// A popup over all there is, on a screen where nothing blends windows.
class HelperBackdrop : public testing::Test {
 protected:
  void open(int window = kWindow, const boost::json::array& frame = {0, 0, 0, 0}) {
    helper_.send(
        {{"type", "window.create"}, {"window", window}, {"view", window}, {"frame", frame}});
    helper_.send({{"type", "window.background"}, {"window", window}, {"color", {0, 0, 0, 0}}});
    helper_.send({{"type", "window.show"}, {"window", window}});
    size_ = helper_.await("window.size", {{"window", window}});
    helper_.sync(window);
  }
  void handOver(int width = 64, int height = 40) {
    const UniqueFd file = memoryOf(halves(width, height));
    helper_.sendWithFiles(backdrop(width, height), {file.get()});
  }
  int widthOfWindow() const { return static_cast<int>(size_.at("width").as_int64()); }
  int heightOfWindow() const { return static_cast<int>(size_.at("height").as_int64()); }
  Pixel at(int x, int y, int window = kWindow) {
    const std::string path = (helper_.directory() / "window.png").string();
    helper_.send({{"type", "snapshot"}, {"id", ++shots_}, {"window", window}, {"path", path}});
    EXPECT_TRUE(helper_.await("snapshot.done", {{"id", shots_}}).at("done").as_bool());
    return pixelAt(path, x, y);
  }
  Pixel left() { return at(widthOfWindow() / 2 - 40, heightOfWindow() / 2); }
  Pixel right() { return at(widthOfWindow() / 2 + 40, heightOfWindow() / 2); }
  static bool isDark(const Pixel& pixel) {
    return pixel[0] < 40 && pixel[1] < 40 && pixel[2] < 40 && pixel[3] == 255;
  }

  HelperUnderTest helper_;
  HelperMessage size_;

 private:
  int shots_ = 0;
};

TEST_F(HelperBackdrop, IsAskedForBeforehandWhereNothingBlendsWindows) {
  helper_.await("backdrop.wanted");
}

TEST_F(HelperBackdrop, WithoutAFrameOfTheGamesIsPlainAndDark) {
  open();
  EXPECT_TRUE(isDark(left()));
  EXPECT_TRUE(isDark(at(0, 0)));
  EXPECT_EQ(left(), right());
}

TEST_F(HelperBackdrop, ShowsTheFrameThatWasHandedOverBeforeTheWindow) {
  helper_.await("backdrop.wanted");
  handOver();
  open();
  EXPECT_EQ(left(), kLeftColour);
  EXPECT_EQ(right(), kRightColour);
  EXPECT_FALSE(helper_.came("backdrop.wanted"));
}

TEST_F(HelperBackdrop, IsAskedForOnceAndShownWhenItComes) {
  helper_.await("backdrop.wanted");
  open();
  EXPECT_FALSE(helper_.came("backdrop.wanted"));
  handOver();
  EXPECT_EQ(left(), kLeftColour);
  EXPECT_EQ(right(), kRightColour);
}

TEST_F(HelperBackdrop, KeepsTheShapeOfTheFrameOnTheDarkGround) {
  handOver(80, 10);
  open();
  EXPECT_EQ(left(), kLeftColour);
  EXPECT_EQ(right(), kRightColour);
  EXPECT_TRUE(isDark(at(widthOfWindow() / 2 - 40, 2)));
}

TEST_F(HelperBackdrop, LiesBeneathThePage) {
  PopupScreen screen(helper_);
  handOver();
  open();
  screen.fillWithWebView();
  screen.loadPage("seethrough.html");
  Pixel card{};
  for (int tries = 0; tries < 20 && card != kCard; ++tries) card = at(50, 150);
  EXPECT_EQ(card, kCard);
  EXPECT_EQ(right(), kRightColour);
}

TEST_F(HelperBackdrop, IsGoneWithTheLastWindowAndAskedForWithTheNext) {
  handOver();
  open();
  helper_.await("backdrop.wanted");  // of the start
  helper_.send({{"type", "window.close"}, {"window", kWindow}});
  open(2);
  helper_.await("backdrop.wanted");
  EXPECT_TRUE(isDark(at(widthOfWindow() / 2, heightOfWindow() / 2, 2)));
}

TEST_F(HelperBackdrop, IsNotStretchedOverAWindowOfAnotherPlace) {
  helper_.await("backdrop.wanted");
  handOver();
  open(kWindow, {60, 40, 390, 700});
  EXPECT_TRUE(isDark(left()));
}

TEST_F(HelperBackdrop, IsAskedForAgainWhenTheWindowHasAnotherSize) {
  GameStandIn game({300, 200, 640, 400});
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  HelperMessage greeting = helper.greeting();
  greeting["nativeWindow"] = game.id();
  helper.send(greeting);
  helper.await("ready");
  helper.await("backdrop.wanted");
  const UniqueFd file = memoryOf(halves(8, 8));
  helper.sendWithFiles(backdrop(8, 8), {file.get()});
  helper.send({{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 0, 0}}});
  helper.send({{"type", "window.show"}, {"window", 1}});
  helper.await("window.size", {{"window", 1}, {"width", 640}, {"height", 400}});
  helper.await("window.key", {{"window", 1}, {"key", true}});
  EXPECT_FALSE(helper.came("backdrop.wanted"));
  game.move({80, 60, 500, 300});
  helper.await("window.size", {{"window", 1}, {"width", 500}, {"height", 300}});
  helper.await("backdrop.wanted");
}

TEST_F(HelperBackdrop, IsNotWantedWhereWindowsAreBlended) {
  const BlendingManager blending;
  HelperUnderTest helper;
  helper.send({{"type", "window.create"}, {"window", 1}, {"view", 1}, {"frame", {0, 0, 0, 0}}});
  helper.send({{"type", "window.background"}, {"window", 1}, {"color", {1, 0, 0, 0.2}}});
  helper.send({{"type", "window.show"}, {"window", 1}});
  helper.await("window.size", {{"window", 1}});
  helper.sync(1);
  EXPECT_FALSE(helper.came("backdrop.wanted"));
  const std::string path = (helper.directory() / "window.png").string();
  helper.send({{"type", "snapshot"}, {"id", 1}, {"window", 1}, {"path", path}});
  EXPECT_TRUE(helper.await("snapshot.done", {{"id", 1}}).at("done").as_bool());
  EXPECT_EQ(pixelAt(path, 100, 100), (Pixel{255, 0, 0, 51}));
}

/// Messages of a game that tries to harm its helper.
class HostileBackdrop : public HelperBackdrop {
 protected:
  HostileBackdrop() { open(); }
  void expectRefused(const HelperMessage& message, const std::vector<int>& files,
                     const std::string& why) {
    if (files.empty()) {
      helper_.send(message);
    } else {
      helper_.sendWithFiles(message, files);
    }
    const std::string line(helper_.await("log").at("line").as_string());
    EXPECT_NE(line.find(why), std::string::npos) << line;
    EXPECT_TRUE(isDark(left()));
  }
};

TEST_F(HostileBackdrop, OfASizeOutOfBoundsIsRefused) {
  const UniqueFd file = memoryOf(halves(64, 40));
  constexpr auto kMost = std::numeric_limits<std::int64_t>::max();
  for (const auto& [width, height] : std::vector<std::pair<std::int64_t, std::int64_t>>{
           {0, 40}, {64, 0}, {16385, 1}, {1, 16385}, {16384, 4097}, {kMost, kMost}}) {
    expectRefused(backdrop(width, height), {file.get()}, "no picture has that size");
  }
  expectRefused(backdrop(-1, 40), {file.get()}, "is no whole number");
  expectRefused({{"type", "backdrop"}, {"width", 64}}, {file.get()}, "is missing");
}

TEST_F(HostileBackdrop, OfAShorterFileIsRefused) {
  const UniqueFd file = memoryOf(halves(64, 40));
  expectRefused(backdrop(64, 41), {file.get()}, "too short");
}

TEST_F(HostileBackdrop, ThatCouldStillBeShortenedIsRefused) {
  const UniqueFd none = memoryOf(halves(64, 40), 0);
  expectRefused(backdrop(64, 40), {none.get()}, "not sealed");
  const UniqueFd writable = memoryOf(halves(64, 40), F_SEAL_SHRINK);
  expectRefused(backdrop(64, 40), {writable.get()}, "not sealed");
  const UniqueFd shrinkable = memoryOf(halves(64, 40), F_SEAL_WRITE);
  expectRefused(backdrop(64, 40), {shrinkable.get()}, "not sealed");
}

TEST_F(HostileBackdrop, WithNoFileOrAnotherKindOfFileIsRefused) {
  expectRefused(backdrop(64, 40), {}, "not sealed");
  const UniqueFd device(::open("/dev/zero", O_RDONLY | O_CLOEXEC));
  expectRefused(backdrop(64, 40), {device.get()}, "not sealed");
}

TEST_F(HostileBackdrop, OfTheRightKindIsShownAfterAllThat) {
  expectRefused(backdrop(64, 40), {}, "not sealed");
  handOver();
  EXPECT_EQ(left(), kLeftColour);
}

}  // namespace
}  // namespace zovk
