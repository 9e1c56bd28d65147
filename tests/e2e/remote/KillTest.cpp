#include <chrono>
#include <csignal>
#include <fstream>
#include <random>
#include <thread>

#include "e2e/remote/RemoteFixture.h"
#include "e2e/remote/SavedDocument.h"

namespace zovk {
namespace {

using testing::AnyOf;
using testing::Each;
using testing::ElementsAre;
using testing::MatchesRegex;
using testing::StartsWith;

class Killed : public RemoteFixture {
 protected:
  Killed() {
    std::filesystem::create_directories(cachePath());
    std::ofstream(cachePath("ZOVKPopupRemote.config")) << documents_[0];
  }

  std::unique_ptr<ChildProcess> savingGame(const std::string& errors = "saving.log") {
    return std::make_unique<ChildProcess>(
        std::vector<std::string>{ZOVKPOPUP_SAVING_GAME, home().string(),
                                 bundle().resourceDirectory()},
        (home() / errors).string());
  }
  bool fileIsWhole() const {
    const std::string found = savedConfig();
    return found == documents_[0] || found == documents_[1];
  }

  const std::string documents_[2] = {savedDocument(0), savedDocument(1)};
};

TEST_F(Killed, AGameThatIsKilledWhileItSavesLeavesAWholeFileAndStartsAgain) {
  constexpr int kKills = 300;
  const auto seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  std::uniform_int_distribution<int> microseconds(0, 15'000);
  std::size_t interrupted = 0;
  std::string firstId;
  for (int kill = 0; kill < kKills; ++kill) {
    const auto game = savingGame();
    const std::string found = game->nextLine().value_or("");
    ASSERT_THAT(found, MatchesRegex("popups:100[01] id:[-0-9A-F]{36} round:[01]?")) << kill;
    const std::string id = found.substr(found.find("id:"), 39);
    if (firstId.empty()) firstId = id;
    ASSERT_EQ(id, firstId);
    // The moment of the kill is to be any moment.
    std::this_thread::sleep_for(std::chrono::microseconds(microseconds(random)));
    game->signal(SIGKILL);
    ASSERT_EQ(game->wait(), -SIGKILL);
    ASSERT_TRUE(fileIsWhole()) << "kill " << kill;
    const auto names = cacheListing();
    ASSERT_THAT(names, Each(AnyOf("ZOVKPopupRemote.config", StartsWith(".zovkpopup-write-"))));
    if (names.size() > 1) ++interrupted;
  }
  RecordProperty("interrupted_saves", static_cast<int>(interrupted));
  EXPECT_GT(interrupted, 0U) << "no kill hit a save";
  startGame("");
  endGame();
  EXPECT_THAT(cacheListing(), ElementsAre("ZOVKPopupRemote.config"));
}

}  // namespace
}  // namespace zovk
