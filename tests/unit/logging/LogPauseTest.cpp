#include <thread>

#include <gmock/gmock.h>

#include "fixtures/EngineFixture.h"
#include "logging/LogPause.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class LogPauseTest : public EngineFixture {
 protected:
  LogPauseTest() {
    debug_("decides the switch");
    log().clear();
  }
  void writeBoth() {
    debug_("debug");
    logError("error");
  }
  static constexpr DebugLog debug_{"Owner", "Owner::operation"};
};

TEST_F(LogPauseTest, HoldsBackErrorAndDebugLinesWhileItLives) {
  {
    const LogPause pause;
    writeBoth();
  }
  EXPECT_THAT(log().lines(), IsEmpty());
  writeBoth();
  EXPECT_EQ(log().lines().size(), 2U);
}

TEST_F(LogPauseTest, Nests) {
  const LogPause outer;
  { const LogPause inner; }
  writeBoth();
  EXPECT_THAT(log().lines(), IsEmpty());
}

TEST_F(LogPauseTest, LeavesOtherThreadsAlone) {
  const LogPause pause;
  std::thread([] { logError("elsewhere"); }).join();
  EXPECT_THAT(log().lines(), ElementsAre("[Error] elsewhere"));
}

}  // namespace
}  // namespace zovk
