#include "unit/logging/LoggerFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ErrorLine = LoggerFixture;

TEST_F(ErrorLine, HoldsLevelAndMessage) {
  ZPLogger::ZPLog(1, "Param illegal");
  logError("%@ not exist", std::string("a.html"));
  EXPECT_THAT(lines(), ElementsAre("[Error] Param illegal", "[Error] a.html not exist"));
}

TEST_F(ErrorLine, HasTheSameLevelWordWhateverLevelIsPassed) {
  ZPLogger::ZPLog(0, "Param illegal");
  ZPLogger::ZPLog(7, "Param illegal");
  EXPECT_THAT(lines(), ElementsAre("[Error] Param illegal", "[Error] Param illegal"));
}

TEST_F(ErrorLine, AppearsWithTheSwitchOff) {
  writeDebugLine();
  logError("Url illegal");
  EXPECT_THAT(lines(), ElementsAre(kRead, "[Error] Url illegal"));
}

TEST_F(ErrorLine, AppearsWithTheSwitchOn) {
  setInfo({{"ZOVK_DEBUG", true}});
  writeDebugLine();
  logError("Url illegal");
  EXPECT_THAT(lines(), ElementsAre(kRead, kFound, kDebugLine, "[Error] Url illegal"));
}

TEST_F(ErrorLine, DoesNotDecideTheSwitch) {
  logError("Url illegal");
  EXPECT_THAT(lines(), ElementsAre("[Error] Url illegal"));
  setInfo({{"ZOVK_DEBUG", true}});
  writeDebugLine();
  EXPECT_THAT(lines(), ElementsAre("[Error] Url illegal", kRead, kFound, kDebugLine));
}

TEST_F(ErrorLine, KeepsPercentSignsOfValuesAsTheyAre) {
  logError("Delete old %@ failed, error:%@", "100%s.html", "%@%n%1$d");
  EXPECT_THAT(lines(), ElementsAre("[Error] Delete old 100%s.html failed, error:%@%n%1$d"));
}

TEST_F(ErrorLine, WithAFormatThatDoesNotFitItsValuesShowsTheFormat) {
  logError("%@ failed, error:%@", "one");
  logError("%d", "text");
  EXPECT_THAT(lines(), ElementsAre("[Error] %@ failed, error:%@", "[Error] %d"));
}

TEST_F(ErrorLine, IsNotMistakenForADebugLineWhateverItsValues) {
  logError("%s:%d: %s", "page", 5, "broken");
  EXPECT_THAT(lines(), ElementsAre("[Error] page:5: broken"));
}

TEST_F(ErrorLine, MayBeEmpty) {
  logError("");
  logError("%@", "");
  EXPECT_THAT(lines(), ElementsAre("[Error] ", "[Error] "));
}

}  // namespace
}  // namespace zovk
