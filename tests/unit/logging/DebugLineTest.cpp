#include "unit/logging/LoggerFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

class DebugLine : public LoggerFixture {
 protected:
  DebugLine() {
    setInfo({{"ZOVK_DEBUG", true}});
    writeDebugLine();
    memory().log.clear();
  }
};

TEST_F(DebugLine, HoldsLevelFileFunctionLineAndMessage) {
  ZPLogger::ZPLog(0, "ZOVKPopupManager", "ZOVKPopupManager::deleteExpirePopupOnceRecord", 817,
                  "Delete expire Popup once record");
  EXPECT_THAT(lines(),
              ElementsAre("[Debug]ZOVKPopupManager ZOVKPopupManager::deleteExpirePopupOnceRecord "
                          "817 Delete expire Popup once record"));
}

TEST_F(DebugLine, HasTheSameLevelWordWhateverLevelIsPassed) {
  for (const int level : {-1, 0, 1, 99}) ZPLogger::ZPLog(level, "Game", "Game::start", 7, "hello");
  EXPECT_THAT(lines(), ElementsAre(kDebugLine, kDebugLine, kDebugLine, kDebugLine));
}

TEST_F(DebugLine, TakesItsValuesInOrder) {
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "%@ is %d of %s", std::string("a"), 1, "all");
  EXPECT_THAT(lines(), ElementsAre("[Debug]Game Game::start 7 a is 1 of all"));
}

TEST_F(DebugLine, KeepsPercentSignsOfValuesAsTheyAre) {
  const std::string hostile = "%s%@%n%d 100% %%";
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "name:%@", hostile);
  EXPECT_THAT(lines(), ElementsAre("[Debug]Game Game::start 7 name:" + hostile));
}

TEST_F(DebugLine, OfAnOperationCarriesTheLineOfTheCall) {
  constexpr DebugLog debug{"Game", "Game::start"};
  const int here = __LINE__;
  debug("first");
  debug("second %d", 2);
  EXPECT_THAT(lines(),
              ElementsAre("[Debug]Game Game::start " + std::to_string(here + 1) + " first",
                          "[Debug]Game Game::start " + std::to_string(here + 2) + " second 2"));
}

TEST_F(DebugLine, GoesOutWholeWithSeveralLinesInIt) {
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "a:%@\nb", "x\ny");
  EXPECT_THAT(lines(), ElementsAre("[Debug]Game Game::start 7 a:x\ny\nb"));
}

TEST_F(DebugLine, GoesOutWholeHoweverLongItIs) {
  const std::string text(5'000'000, 'x');
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "%@", text);
  EXPECT_THAT(lines(), ElementsAre("[Debug]Game Game::start 7 " + text));
}

TEST_F(DebugLine, WithAFormatThatDoesNotFitItsValuesShowsTheFormat) {
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "%@ and %@", "only one");
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "%d", "text");
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "100%");
  EXPECT_THAT(lines(),
              ElementsAre("[Debug]Game Game::start 7 %@ and %@", "[Debug]Game Game::start 7 %d",
                          "[Debug]Game Game::start 7 100%"));
}

using SilentDebugLine = LoggerFixture;

TEST_F(SilentDebugLine, NeitherFormatsItsMessageNorAsksForItsValues) {
  int asked = 0;
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "%@", [&asked] {
    ++asked;
    return std::string("costly");
  });
  EXPECT_EQ(asked, 0);
  EXPECT_THAT(lines(), ElementsAre(kRead));
}

TEST_F(DebugLine, AsksOnceForAValueThatIsAFunction) {
  int asked = 0;
  ZPLogger::ZPLog(0, "Game", "Game::start", 7, "%@", [&asked] {
    ++asked;
    return std::string("costly");
  });
  EXPECT_EQ(asked, 1);
  EXPECT_THAT(lines(), ElementsAre("[Debug]Game Game::start 7 costly"));
}

}  // namespace
}  // namespace zovk
