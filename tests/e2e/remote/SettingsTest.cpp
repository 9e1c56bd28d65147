#include <array>
#include <csignal>
#include <fstream>
#include <memory>

#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include "e2e/remote/RemoteFixture.h"
#include "e2e/remote/SavedDocument.h"

namespace zovk {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close(database); }
};

/// Another process that holds a lock on an SQLite file for as long as the object lives.
class LockHolder {
 public:
  explicit LockHolder(const std::string& path) {
    std::array<int, 2> ready{};
    if (::pipe(ready.data()) != 0) return;
    process_ = ::fork();
    if (process_ == 0) hold(path, ready[1]);
    ::close(ready[1]);
    char byte = 0;
    held_ = ::read(ready[0], &byte, 1) == 1;
    ::close(ready[0]);
  }
  ~LockHolder() {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
  }
  LockHolder(const LockHolder&) = delete;
  LockHolder& operator=(const LockHolder&) = delete;
  bool isHeld() const { return held_; }

 private:
  [[noreturn]] static void hold(const std::string& path, int ready) {
    sqlite3* database = nullptr;
    const bool locked =
        sqlite3_open(path.c_str(), &database) == SQLITE_OK &&
        sqlite3_exec(database, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr) == SQLITE_OK;
    if (!locked || ::write(ready, "", 1) != 1) ::_exit(1);
    while (true) ::pause();
  }

  pid_t process_ = -1;
  bool held_ = false;
};

class Settings : public RemoteFixture {
 protected:
  /// The install identifiers of the configuration requests that the service has answered.
  std::vector<std::string> identifiersSeen() const {
    std::vector<std::string> found;
    const std::string text = requestLog();
    const std::string name = "install_id=";
    for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
      found.push_back(text.substr(at + name.size(), text.find('&', at) - at - name.size()));
    }
    return found;
  }
  std::string stored(const std::string& key) const {
    sqlite3* opened = nullptr;
    sqlite3_open(settingsPath().c_str(), &opened);
    const std::unique_ptr<sqlite3, CloseDatabase> database(opened);
    std::string value;
    const auto keep = [](void* into, int, char** columns, char**) {
      *static_cast<std::string*>(into) = columns[0];
      return 0;
    };
    const std::string sql = "SELECT value FROM settings WHERE key = '" + key + "'";
    EXPECT_EQ(sqlite3_exec(opened, sql.c_str(), keep, &value, nullptr), SQLITE_OK);
    return value;
  }
  std::unique_ptr<ChildProcess> savingGame(const std::string& errors) {
    return std::make_unique<ChildProcess>(
        std::vector<std::string>{ZOVKPOPUP_SAVING_GAME, home().string(),
                                 bundle().resourceDirectory()},
        (home() / errors).string());
  }
};

TEST_F(Settings, KeepTheInstallIdentifierOverStarts) {
  startService();
  letADayPass();
  letADayPass();
  stopService();
  const auto seen = identifiersSeen();
  ASSERT_EQ(seen.size(), 2U);
  EXPECT_THAT(seen, Each(stored("uuid")));
}

TEST_F(Settings, ThatAreCorruptArePutAsideAndBegunAfresh) {
  const std::string garbage(10'000, 'g');
  std::filesystem::create_directories(settingsPath().parent_path());
  std::ofstream(settingsPath()) << garbage;
  startService();
  startGame();
  awaitPages(1);
  EXPECT_THAT(log().errors(), ElementsAre("Settings file:" + settingsPath().string() +
                                          " is corrupt, begun afresh"));
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  EXPECT_EQ(readFile(settingsPath().string() + ".corrupt"), garbage);
  endGame();
  letADayPass();
  EXPECT_THAT(log().errors(), IsEmpty());
  stopService();
  EXPECT_THAT(identifiersSeen(), ElementsAre(stored("uuid"), stored("uuid")));
}

TEST_F(Settings, ThatAnotherProcessLocksDoNotKeepTheGameFromStarting) {
  startService();
  letADayPass();
  const std::string before = stored("uuid");
  {
    const LockHolder holder(settingsPath().string());
    ASSERT_TRUE(holder.isHeld());
    startGame();
    awaitPages(1);
    EXPECT_THAT(log().errors(), ElementsAre("Settings file:" + settingsPath().string() +
                                            " is held by another program, tried again later"));
    EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
    endGame();
  }
  EXPECT_EQ(stored("uuid"), before);
  letADayPass();
  EXPECT_THAT(log().errors(), IsEmpty());
  stopService();
  EXPECT_EQ(identifiersSeen().back(), before);
}

TEST_F(Settings, AreSharedByTwoProcessesOfOneGameAtOnce) {
  const auto one = savingGame("one.log");
  const auto two = savingGame("two.log");
  std::vector<std::string> said{one->nextLine().value_or(""), two->nextLine().value_or("")};
  EXPECT_EQ(said[0].substr(said[0].find("id:"), 39), said[1].substr(said[1].find("id:"), 39));
  for (int i = 0; i < 3; ++i) {
    said = {one->nextLine().value_or(""), two->nextLine().value_or("")};
    EXPECT_THAT(said, Each(testing::AnyOf("saved", "a save failed")));
  }
  one->signal(SIGKILL);
  two->signal(SIGKILL);
  one->wait();
  two->wait();
  EXPECT_THAT(stored("round"), testing::AnyOf("0", "1"));
  EXPECT_THAT(savedConfig(), testing::AnyOf(savedDocument(0), savedDocument(1)));
  startService();
  startGame();
  awaitPages(1);
  EXPECT_THAT(log().errors(), IsEmpty());
}

TEST_F(Settings, AndFilesMayBeInUseByAnotherProcessWhenTheGameStarts) {
  const auto other = savingGame("other.log");
  ASSERT_TRUE(other->nextLine());
  startService();
  startGame();
  awaitPages(1);
  EXPECT_TRUE(log().has("Save ZOVKPopupRemote.config done, result:1"));
  EXPECT_THAT(log().errors(), IsEmpty());
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
  other->signal(SIGKILL);
  other->wait();
}

}  // namespace
}  // namespace zovk
