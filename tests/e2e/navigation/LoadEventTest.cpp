#include <csignal>
#include <fstream>

#include <unistd.h>

#include "e2e/navigation/NavigationFixture.h"
#include "fixtures/ProcessFacts.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

using LoadEvent = NavigationFixture;

std::string decision(const std::string& url) {
  return "Decide policy for navigation action, url:" + url;
}

int killWebProcesses() {
  int killed = 0;
  for (const pid_t process : descendantsOf(getpid())) {
    std::string name;
    std::getline(std::ifstream("/proc/" + std::to_string(process) + "/comm"), name);
    if (name.starts_with("WebKitWebProc") && kill(process, SIGKILL) == 0) ++killed;
  }
  return killed;
}

TEST_F(LoadEvent, ALoadThatGoesWellIsThreeLines) {
  const std::string own = servePage("");
  show(own);
  pumpUntil([&] { return logged("Did finish navigation"); }, "the page");
  EXPECT_THAT(navigationLines(), ElementsAre(decision(own), "Did start provisional navigation",
                                             "Did finish navigation"));
}

TEST_F(LoadEvent, ASiteThatDoesNotAnswerIsOnlyLogged) {
  const std::string nobody = unusedAddress() + "/own";
  show(nobody);
  pumpUntil([&] { return logged("Did fail provisional navigation"); }, "the failure");
  EXPECT_THAT(navigationLines(),
              ElementsAre(decision(nobody), "Did start provisional navigation",
                          StartsWith("Did fail provisional navigation, error:Could not connect")));
  EXPECT_THAT(answers(), IsEmpty());
}

TEST_F(LoadEvent, APageThatBreaksOffIsOnlyLogged) {
  const std::string own = site().brokenPage("/own");
  show(own);
  pumpUntil([&] { return logged("Did fail navigation"); }, "the failure");
  EXPECT_THAT(navigationLines(), ElementsAre(decision(own), "Did start provisional navigation",
                                             StartsWith("Did fail navigation, error:")));
  EXPECT_THAT(answers(), IsEmpty());
}

TEST_F(LoadEvent, APageWhoseProcessIsKilledIsLoadedAgain) {
  const std::string own = servePage("");
  show(own);
  pumpUntil([&] { return logged("Did finish navigation"); }, "the page");
  servePage("tell('again');");
  ASSERT_GT(killWebProcesses(), 0);
  EXPECT_EQ(pageTells(), "again");
  EXPECT_THAT(decided(), ElementsAre(own, own));
  EXPECT_THAT(site().requestsTo("/own"), ElementsAre("GET ", "GET "));
  EXPECT_FALSE(logged("Helper"));
}

}  // namespace
}  // namespace zovk
