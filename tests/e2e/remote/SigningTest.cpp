#include <algorithm>
#include <sstream>

#include "e2e/remote/RemoteFixture.h"

namespace zovk {
namespace {

using testing::IsEmpty;

// Queries to addresses that programs read in different ways, against a service that checks what
// was signed.
class Signing : public RemoteFixture {
 protected:
  /// Lets the game ask about popups with these addresses, one after another.
  void askAt(const std::vector<std::string>& checkPaths) {
    folder().write("checks.json", R"({"vip": 0, "a|b": 0, "50%": 0, "中": 0})");
    boost::json::array popups;
    for (std::size_t i = 0; i < checkPaths.size(); ++i) {
      popups.push_back(conditional(std::to_string(i), checkPaths[i]));
    }
    offer(popups);
    startService();
    startGame();
    await("Start to download remote Popup file");
    log().clear();
    for (std::size_t i = 0; i < checkPaths.size(); ++i) {
      ZOVKPopup::showPopup(std::to_string(i), 0, recordAnswer());
      pumpUntilAnswers(i + 1);
    }
    endGame();
    stopService();
  }
  /// Returns the queries that the service has received, each with the status of its answer.
  std::vector<std::string> queries() const {
    std::vector<std::string> seen;
    std::istringstream lines(requestLog());
    for (std::string line; std::getline(lines, line);) {
      if (line.starts_with("POST ")) seen.push_back(line);
    }
    return seen;
  }
};

TEST_F(Signing, OfEveryAddressThatCanBeReadIsAccepted) {
  const std::vector<std::string> paths = {
      "/check/vip",        "/check/vip?x=a|b",        "/check/vip?x=[1]", "/check/vip?q=中",
      "/check/vip?x=50%",  "/x/../check/vip",         "/check/./vip?a=1", "/x/%2e%2E/check/vip",
      "/check/%76ip?a=%7", "/check/vip?x=\"<>\\^`{}", "/check/a|b",       "/check/50%",
      "/check/中",         "/check/%E4%B8%AD?a=1&b"};
  askAt(paths);
  const auto seen = queries();
  EXPECT_EQ(seen.size(), paths.size());
  for (const std::string& query : seen) EXPECT_THAT(query, testing::EndsWith(" 200"));
  EXPECT_EQ(log().errors(), std::vector<std::string>());
}

TEST_F(Signing, AnAddressThatCannotBeReadIsNotSent) {
  askAt({"/check/v ip", "/check/v%00ip"});
  EXPECT_THAT(queries(), IsEmpty());
  ASSERT_EQ(log().errors().size(), 4U);
  EXPECT_THAT(log().errors()[0], testing::HasSubstr(", error:unusable address"));
  EXPECT_EQ(log().errors()[1], "Query condition Popup request failed");
  EXPECT_THAT(log().errors()[2], testing::HasSubstr(", error:unusable address"));
  EXPECT_EQ(log().errors()[3], "Query condition Popup request failed");
}

}  // namespace
}  // namespace zovk
