#include <array>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "helperclient/ClientFixture.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Bytes = std::vector<std::uint8_t>;
constexpr const char* kWanted = R"({"type":"backdrop.wanted"})";

Bytes contentOf(const UniqueFd& file) {
  struct stat facts {};
  EXPECT_EQ(::fstat(file.get(), &facts), 0);
  Bytes bytes(static_cast<std::size_t>(facts.st_size));
  EXPECT_EQ(::pread(file.get(), bytes.data(), bytes.size(), 0), facts.st_size);
  return bytes;
}

/// A game that hands over a picture. It has two pixels, one above the other, unless the test sets
/// others.
class HelperBackdrops : public ClientOfTheHelper {
 protected:
  HelperBackdrops() {
    settings_.backdrop = [this] {
      ++asked_;
      return picture_;
    };
    picture_.pixels = pixels_.data();
    picture_.width = 1;
    picture_.height = 2;
  }
  void showWindow() {
    window_ = client_->makeWindow({});
    window_->makeKeyAndVisible();
  }
  /// Returns the commands that hand over a picture.
  std::vector<HelperMessage> handedOver() { return hosts_.last().messages("backdrop"); }
  Bytes bytesFor(ZOVKPopupPixels format) {
    picture_.format = format;
    receive(kWanted);
    EXPECT_THAT(handedOver(), SizeIs(1));
    auto& files = hosts_.last().files();
    if (files.size() != 1) return {};
    Bytes bytes = contentOf(files.front());
    files.clear();
    return bytes;
  }

  Bytes pixels_{1, 2, 3, 4, 5, 6, 7, 8};
  ZOVKPopupPicture picture_;
  int asked_ = 0;
};

TEST_F(HelperBackdrops, AGameIsNotAskedWhereItIsSeenThroughThePopups) {
  startReady();
  showWindow();
  EXPECT_EQ(asked_, 0);
  EXPECT_THAT(handedOver(), IsEmpty());
}

TEST_F(HelperBackdrops, TheFrameIsHandedOverBeforeTheFirstWindowIsShown) {
  startReady();
  receive(kWanted);
  EXPECT_EQ(asked_, 0);
  showWindow();
  EXPECT_THAT(commands(),
              ElementsAre(HasSubstr("window.create"), R"({"type":"backdrop","width":1,"height":2})",
                          HasSubstr("window.show")));
  ASSERT_THAT(hosts_.last().files(), SizeIs(1));
  EXPECT_EQ(contentOf(hosts_.last().files().front()), (Bytes{1, 2, 3, 255, 5, 6, 7, 255}));
}

TEST_F(HelperBackdrops, TheGameIsAskedOnceForWindowsThatFollowOneAnother) {
  startReady();
  receive(kWanted);
  showWindow();
  window_->makeKeyAndVisible();
  const auto second = client_->makeWindow({});
  second->makeKeyAndVisible();
  EXPECT_EQ(asked_, 1);
}

TEST_F(HelperBackdrops, TheGameIsAskedAgainForTheNextTime) {
  startReady();
  receive(kWanted);
  showWindow();
  window_.reset();
  showWindow();
  EXPECT_EQ(asked_, 2);
}

TEST_F(HelperBackdrops, TheGameIsAskedAtOnceWhenTheHelperWantsItWhileSomethingIsShown) {
  startReady();
  showWindow();
  receive(kWanted);
  receive(kWanted);
  EXPECT_EQ(asked_, 2);
  EXPECT_THAT(handedOver(), SizeIs(2));
}

TEST_F(HelperBackdrops, EveryOrderOfBytesBecomesTheHelpersOwn) {
  startReady();
  showWindow();
  EXPECT_EQ(bytesFor(ZOVKPopupPixels::kBgrx), (Bytes{1, 2, 3, 255, 5, 6, 7, 255}));
  EXPECT_EQ(bytesFor(ZOVKPopupPixels::kRgbx), (Bytes{3, 2, 1, 255, 7, 6, 5, 255}));
  EXPECT_EQ(bytesFor(ZOVKPopupPixels::kRgb), (Bytes{3, 2, 1, 255, 6, 5, 4, 255}));
}

TEST_F(HelperBackdrops, RowsMayLieApartAndFromTheBottomUp) {
  pixels_ = {1, 2, 3, 0, 9, 9, 9, 9, 4, 5, 6, 0};
  picture_.pixels = pixels_.data() + 8;
  picture_.stride = -8;
  startReady();
  showWindow();
  EXPECT_EQ(bytesFor(ZOVKPopupPixels::kBgrx), (Bytes{4, 5, 6, 255, 1, 2, 3, 255}));
}

TEST_F(HelperBackdrops, APictureOfManyRowsIsWhole) {
  constexpr int kSide = 700;  // more than is written at a time
  pixels_.assign(std::size_t{kSide} * kSide * 4, 0);
  for (std::size_t i = 0; i < pixels_.size(); ++i) pixels_[i] = static_cast<std::uint8_t>(i / 977);
  picture_.pixels = pixels_.data();
  picture_.width = picture_.height = kSide;
  startReady();
  showWindow();
  Bytes wanted = pixels_;
  for (std::size_t i = 3; i < wanted.size(); i += 4) wanted[i] = 255;
  EXPECT_TRUE(bytesFor(ZOVKPopupPixels::kBgrx) == wanted);
}

TEST_F(HelperBackdrops, NobodyCanChangeWhatWasHandedOver) {
  startReady();
  showWindow();
  receive(kWanted);
  handedOver();
  ASSERT_THAT(hosts_.last().files(), SizeIs(1));
  const int file = hosts_.last().files().front().get();
  EXPECT_EQ(::fcntl(file, F_GET_SEALS), F_SEAL_WRITE | F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL);
  EXPECT_NE(::ftruncate(file, 0), 0);
}

TEST_F(HelperBackdrops, AGameThatHasNoFrameHandsNothingOver) {
  picture_.pixels = nullptr;
  startReady();
  showWindow();
  receive(kWanted);
  EXPECT_EQ(asked_, 1);
  EXPECT_THAT(handedOver(), IsEmpty());
  EXPECT_THAT(takeLines(), IsEmpty());
}

TEST_F(HelperBackdrops, APictureOutOfBoundsIsLeftOutWithOneLine) {
  startReady();
  showWindow();
  const auto refused = [this](int width, int height, std::ptrdiff_t stride, int format) {
    picture_.width = width;
    picture_.height = height;
    picture_.stride = stride;
    picture_.format = static_cast<ZOVKPopupPixels>(format);
    receive(kWanted);
    return handedOver().empty();
  };
  EXPECT_TRUE(refused(16385, 1, 0, 0));
  EXPECT_TRUE(refused(1, 16385, 0, 0));
  EXPECT_TRUE(refused(16384, 4097, 0, 0));  // one row above 256 MiB
  EXPECT_TRUE(refused(0, 1, 0, 0));
  EXPECT_TRUE(refused(1, -1, 0, 0));
  EXPECT_TRUE(refused(1, 1, 3, 0));
  EXPECT_TRUE(refused(1, 1, -3, 0));
  EXPECT_TRUE(refused(1, 1, (1 << 24) + 1, 0));
  EXPECT_TRUE(refused(1, 1, std::numeric_limits<std::ptrdiff_t>::min(), 0));
  EXPECT_TRUE(refused(1, 1, 0, 3));
  EXPECT_FALSE(refused(1, 1, 1 << 24, 0));
  EXPECT_FALSE(refused(1, 1, 4, 0));
  EXPECT_THAT(takeLines(), ElementsAre(HasSubstr("The game's backdrop is left out")));
}

TEST_F(HelperBackdrops, AsLongARowAsMayBeIsHandedOver) {
  pixels_.assign(std::size_t{16384} * 4, 7);
  picture_.pixels = pixels_.data();
  picture_.width = 16384;
  picture_.height = 1;
  startReady();
  showWindow();
  EXPECT_THAT(bytesFor(ZOVKPopupPixels::kBgrx), SizeIs(pixels_.size()));
}

TEST_F(HelperBackdrops, AHelperThatAsksWithoutEndIsServedTwentyTimesASecond) {
  std::chrono::steady_clock::time_point now{std::chrono::hours(1)};
  HelperLauncher launcher = hosts_.launcher();
  launcher.now = [&now] { return now; };
  start(launcher);
  hosts_.last().becomeReady();
  pump();
  showWindow();
  for (int i = 0; i < 30; ++i) receive(kWanted);
  EXPECT_EQ(asked_, 20);
  now += std::chrono::seconds(1);
  receive(kWanted);
  EXPECT_EQ(asked_, 21);
}

TEST_F(HelperBackdrops, TheNextHelperSaysForItselfWhatItWants) {
  startReady();
  receive(kWanted);
  killHelper();
  hosts_.last().becomeReady();
  pump();
  showWindow();
  EXPECT_EQ(asked_, 0);
}

TEST_F(HelperBackdrops, AFileGoesWithItsOwnMessageHoweverMuchWaitsBefore) {
  startReady();
  showWindow();
  hosts_.last().messages();
  const auto view = client_->makeWebView({});
  view->evaluateJavaScript(std::string(std::size_t{4} * 1024 * 1024, 'x'), {});
  receive(kWanted);
  picture_.height = 1;
  receive(kWanted);
  std::vector<HelperMessage> got;
  pumpUntil("both pictures", [&] {
    for (HelperMessage& message : handedOver()) got.push_back(std::move(message));
    return got.size() == 2;
  });
  ASSERT_THAT(hosts_.last().files(), SizeIs(2));
  EXPECT_THAT(contentOf(hosts_.last().files()[0]), SizeIs(8));
  EXPECT_THAT(contentOf(hosts_.last().files()[1]), SizeIs(4));
}

TEST_F(HelperBackdrops, AGameMayShutDownWhenItIsAsked) {
  settings_.backdrop = [this] {
    client_->shutDown();
    return picture_;
  };
  startReady();
  showWindow();
  receive(kWanted);
  pump();
}

TEST_F(HelperBackdrops, WhatTheGameGaveIsLetGoAtShutdown) {
  const auto held = std::make_shared<int>(1);
  settings_.backdrop = [held] { return ZOVKPopupPicture{}; };
  startReady();
  showWindow();
  settings_.backdrop = nullptr;
  client_->shutDown();
  EXPECT_EQ(held.use_count(), 1);
}

}  // namespace
}  // namespace zovk
