#include <string>

#include <gtest/gtest.h>

#include "helper/pad/PadPage.h"
#include "helper/pad/PadQueue.h"
#include "helper/pad/PadSteps.h"

namespace zovk::helper {
namespace {

constexpr PadPlace kHere{100, 100, 50, 20};

TEST(PadSteps, GoToTheNearestPlaceInTheDirection) {
  const std::vector<PadPlace> places = {
      kHere, {100, 200, 50, 20}, {100, 300, 50, 20}, {100, 0, 50, 20}, {300, 100, 50, 20}};
  EXPECT_EQ(nextPlace(kHere, places, PadDirection::kDown), 1U);
  EXPECT_EQ(nextPlace(kHere, places, PadDirection::kUp), 3U);
  EXPECT_EQ(nextPlace(kHere, places, PadDirection::kRight), 4U);
  EXPECT_EQ(nextPlace(kHere, places, PadDirection::kLeft), std::nullopt);
}

TEST(PadSteps, PreferWhatIsInLine) {
  const std::vector<PadPlace> places = {{400, 140, 50, 20}, {110, 240, 50, 20}};
  EXPECT_EQ(nextPlace(kHere, places, PadDirection::kDown), 1U);
}

TEST(PadSteps, TakeTheCloserOfTwoInLine) {
  const std::vector<PadPlace> places = {{60, 200, 45, 20}, {100, 200, 50, 20}};
  EXPECT_EQ(nextPlace(kHere, places, PadDirection::kDown), 1U);
}

TEST(PadSteps, DoNotGoToWhatLiesWithinOrAround) {
  EXPECT_EQ(nextPlace(kHere, {{0, 0, 400, 400}}, PadDirection::kDown), std::nullopt);
  EXPECT_EQ(nextPlace(kHere, {}, PadDirection::kDown), std::nullopt);
}

TEST(PadSteps, PassOverWhatOnlyReachesFurtherInTheDirection) {
  // Its middle lies below, but more than half of it lies beside.
  EXPECT_EQ(nextPlace(kHere, {{160, 105, 50, 20}}, PadDirection::kDown), std::nullopt);
  EXPECT_EQ(nextPlace(kHere, {{160, 111, 50, 20}}, PadDirection::kDown), 0U);
}

TEST(PadSteps, TakeTheFirstOfTwoThatAreAsFar) {
  const std::vector<PadPlace> places = {{100, 200, 50, 20}, {100, 200, 50, 20}};
  EXPECT_EQ(nextPlace(kHere, places, PadDirection::kDown), 0U);
}

TEST(PadSteps, CountWhatOverlapsAsNextToIt) {
  // Both touch the line below; the second is right beneath, the first overlaps and is a bit aside.
  const std::vector<PadPlace> places = {{110, 112, 50, 20}, {100, 120, 50, 20}};
  EXPECT_EQ(nextPlace(kHere, places, PadDirection::kDown), 1U);
}

TEST(PadSteps, CountWhatIsAsideOnEitherSide) {
  EXPECT_EQ(nextPlace(kHere, {{10, 150, 50, 20}, {110, 160, 50, 20}}, PadDirection::kDown), 1U);
  EXPECT_EQ(nextPlace(kHere, {{190, 150, 50, 20}, {110, 160, 50, 20}}, PadDirection::kDown), 1U);
}

TEST(PadQueue, RunsAStepOnceTheOneBeforeIsDone) {
  PadQueue queue;
  std::string order;
  PadQueue::Done finish;
  queue.add([&](const PadQueue::Done& done) {
    order += '1';
    finish = done;
  });
  queue.add([&](const PadQueue::Done& done) {
    order += '2';
    done();
  });
  EXPECT_EQ(order, "1");
  finish();
  EXPECT_EQ(order, "12");
  queue.add([&](const PadQueue::Done&) { order += '3'; });
  EXPECT_EQ(order, "123");
}

TEST(PadQueue, LeavesOutWhatIsTooMuch) {
  PadQueue queue;
  std::size_t run = 0;
  PadQueue::Done finish;
  queue.add([&](const PadQueue::Done& done) { finish = done; });
  for (std::size_t i = 0; i < PadQueue::kMostWaiting + 1; ++i) {
    queue.add([&](const PadQueue::Done& done) {
      ++run;
      done();
    });
  }
  finish();
  EXPECT_EQ(run, PadQueue::kMostWaiting);
}

TEST(PadQueue, MayGoBeforeAStepIsDone) {
  PadQueue::Done finish;
  bool ran = false;
  {
    PadQueue queue;
    queue.add([&](const PadQueue::Done& done) { finish = done; });
    queue.add([&](const PadQueue::Done&) { ran = true; });
  }
  finish();
  EXPECT_FALSE(ran);
}

TEST(PadPage, IsReadWithTheFocusAndWhatIsLeftOfIt) {
  const PadPage page =
      readPadPage(R"({"places":[[1,2,3,4],[5.5,6,7,8]],"focused":1,"above":false,"below":true})");
  ASSERT_EQ(page.places.size(), 2U);
  EXPECT_EQ(page.places[1].x, 5.5);
  EXPECT_EQ(page.places[1].height, 8);
  EXPECT_EQ(page.focused, 1U);
  EXPECT_FALSE(page.above);
  EXPECT_TRUE(page.below);
}

TEST(PadPage, IsEmptyWhenTheTextIsNoneOfTheScripts) {
  for (const char* text : {"", "null", "[]", "{}", R"({"places":[[1,2,3]],"focused":0})",
                           R"({"places":["a"],"focused":-1,"above":false,"below":false})",
                           R"({"places":[[1,2,3,4]],"focused":"0","above":false,"below":false})"}) {
    EXPECT_TRUE(readPadPage(text).places.empty()) << text;
  }
}

TEST(PadPage, HasNoFocusOnAPlaceThatIsNotThere) {
  for (const char* focused : {"-1", "1", "99999999999"}) {
    const PadPage page = readPadPage(std::string(R"({"places":[[1,2,3,4]],"focused":)") + focused +
                                     R"(,"above":false,"below":false})");
    EXPECT_EQ(page.places.size(), 1U);
    EXPECT_EQ(page.focused, std::nullopt) << focused;
  }
}

TEST(PadPage, HasABoundedNumberOfPlaces) {
  const auto textOf = [](std::size_t count) {
    std::string places = "[1,2,3,4]";
    for (std::size_t i = 1; i < count; ++i) places += ",[1,2,3,4]";
    return R"({"places":[)" + places + R"(],"focused":-1,"above":false,"below":false})";
  };
  EXPECT_EQ(readPadPage(textOf(kMaximumPadPlaces)).places.size(), kMaximumPadPlaces);
  EXPECT_EQ(readPadPage(textOf(kMaximumPadPlaces + 1)).places.size(), kMaximumPadPlaces);
}

}  // namespace
}  // namespace zovk::helper
