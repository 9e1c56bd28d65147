#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ScratchDirectory.h"
#include "logging/ZPLogger.h"
#include "platform/linux/settings/SqliteSettings.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

mode_t modeOf(const std::string& file) {
  struct stat status {};
  EXPECT_EQ(::lstat(file.c_str(), &status), 0) << file;
  return status.st_mode & 07777U;
}

class SqliteSettingsTest : public testing::Test {
 protected:
  SqliteSettingsTest() {
    LogEnvironment environment;
    environment.writeLine = [this](std::string_view line) { lines.emplace_back(line); };
    ZPLogger::setEnvironment(environment);
  }
  ~SqliteSettingsTest() override { ZPLogger::setEnvironment({}); }

  void writeFile(const std::string& text) { std::ofstream(path) << text; }
  static std::string readFile(const std::string& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
  }
  // Changes the page with the table, not the header.
  void breakTable() {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(4096);
    file << std::string(4096, '\xee');
  }
  SqliteDatabase openDirectly() {
    sqlite3* database = nullptr;
    EXPECT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    return SqliteDatabase(database);
  }

  ScratchDirectory scratch;
  std::string path = scratch / "settings.db";
  std::vector<std::string> lines;
};

TEST_F(SqliteSettingsTest, NothingIsOpenedBeforeTheFirstUse) {
  const SqliteSettings settings(path);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(SqliteSettingsTest, ValuesOutliveTheStore) {
  SqliteSettings(path).set("key", "value");
  EXPECT_THAT(SqliteSettings(path).value("key"), Optional(std::string("value")));
  SqliteSettings(path).remove("key");
  EXPECT_FALSE(SqliteSettings(path).value("key"));
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(SqliteSettingsTest, TheFileIsTheUsersAlone) {
  SqliteSettings(path).set("key", "value");
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777U, 0600U);
}

TEST_F(SqliteSettingsTest, AFileThatIsNoDatabaseIsPutAsideAndBegunAfresh) {
  const std::string garbage(10'000, 'g');
  writeFile(garbage);
  SqliteSettings settings(path);
  settings.set("key", "value");
  EXPECT_THAT(settings.value("key"), Optional(std::string("value")));
  EXPECT_EQ(readFile(path + ".corrupt"), garbage);
  EXPECT_THAT(lines, ElementsAre(HasSubstr("is corrupt, begun afresh")));
}

TEST_F(SqliteSettingsTest, ADatabaseWhoseTableIsBrokenIsPutAsideToo) {
  SqliteSettings(path).set("key", "value");
  breakTable();
  SqliteSettings settings(path);
  EXPECT_FALSE(settings.value("key"));
  settings.set("key", "anew");
  EXPECT_THAT(settings.value("key"), Optional(std::string("anew")));
  EXPECT_TRUE(std::filesystem::exists(path + ".corrupt"));
  EXPECT_THAT(lines, ElementsAre(HasSubstr("is corrupt, begun afresh")));
}

TEST_F(SqliteSettingsTest, ADirectoryThatIsMissingLosesWritesWithAnErrorLine) {
  SqliteSettings settings(scratch / "missing/settings.db");
  settings.set("key", "value");
  EXPECT_FALSE(settings.value("key"));
  EXPECT_THAT(lines, ElementsAre(HasSubstr("[Error] Save setting failed"),
                                 HasSubstr("[Error] Read setting failed")));
}

// Another program that holds the store, for as long as this lives.
class HeldStore {
 public:
  explicit HeldStore(SqliteDatabase other) : other_(std::move(other)) {
    EXPECT_EQ(sqlite3_exec(other_.get(), "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  }
  ~HeldStore() { sqlite3_exec(other_.get(), "ROLLBACK", nullptr, nullptr, nullptr); }
  HeldStore(const HeldStore&) = delete;
  HeldStore& operator=(const HeldStore&) = delete;

 private:
  SqliteDatabase other_;
};

TEST_F(SqliteSettingsTest, AStoreThatIsHeldCostsTheGameOneShortWaitAndOneLine) {
  SqliteSettings settings(path);
  settings.set("key", "old");
  const HeldStore held(openDirectly());
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 20; ++i) {
    settings.set("key", std::to_string(i));
    settings.value("other");
  }
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_GT(waited, SqliteSettings::kPatience / 2) << "a short hold is waited for";
  EXPECT_LT(waited, 20 * SqliteSettings::kPatience) << "forty calls did not wait each";
  EXPECT_THAT(lines, ElementsAre(HasSubstr("is held by another program, tried again later")));
}

TEST_F(SqliteSettingsTest, ReadsOfAHeldStoreGiveWhatIsKnown) {
  SqliteSettings settings(path);
  settings.set("set", "1");
  SqliteSettings(path).set("read", "2");
  SqliteSettings(path).set("unread", "3");
  settings.value("read");
  EXPECT_TRUE(settings.isReadable());
  {
    const HeldStore held(openDirectly());
    EXPECT_THAT(settings.value("set"), Optional(std::string("1")));
    EXPECT_THAT(settings.value("read"), Optional(std::string("2")));
    EXPECT_FALSE(settings.value("unread"));
    EXPECT_FALSE(settings.isReadable());
  }
  EXPECT_THAT(settings.value("unread"), Optional(std::string("3")));
  EXPECT_TRUE(settings.isReadable());
}

TEST_F(SqliteSettingsTest, ChangesOfAHeldStoreCountAtOnceAndAreKeptByALaterCall) {
  SqliteSettings settings(path);
  settings.set("changed", "old");
  settings.set("removed", "old");
  {
    const HeldStore held(openDirectly());
    settings.set("changed", "new");
    settings.remove("removed");
    EXPECT_THAT(settings.value("changed"), Optional(std::string("new")));
    EXPECT_FALSE(settings.value("removed"));
  }
  EXPECT_THAT(SqliteSettings(path).value("changed"), Optional(std::string("old")));
  settings.value("another");
  EXPECT_THAT(SqliteSettings(path).value("changed"), Optional(std::string("new")));
  EXPECT_FALSE(SqliteSettings(path).value("removed"));
}

TEST_F(SqliteSettingsTest, ChangesThatWaitAreKeptWhenAsked) {
  SqliteSettings settings(path);
  {
    SqliteSettings(path).set("key", "old");
    const HeldStore held(openDirectly());
    settings.set("key", "new");
    settings.keepQueued(std::chrono::milliseconds(0));
    settings.keepQueuedNowAndThen();
  }
  EXPECT_THAT(SqliteSettings(path).value("key"), Optional(std::string("old")));
  settings.keepQueued(std::chrono::milliseconds(0));
  EXPECT_THAT(SqliteSettings(path).value("key"), Optional(std::string("new")));
}

TEST_F(SqliteSettingsTest, AnEndedHoldIsToldAnewWhenItComesAgain) {
  SqliteSettings settings(path);
  for (int i = 0; i < 2; ++i) {
    const HeldStore held(openDirectly());
    settings.set("key", "value");
    settings.set("key", "value");
  }
  settings.set("key", "value");
  {
    const HeldStore held(openDirectly());
    settings.set("key", "value");
  }
  EXPECT_EQ(lines.size(), 2U);
}

TEST_F(SqliteSettingsTest, WhatIsNoFileIsNeitherOpenedNorWaitedFor) {
  const std::string elsewhere = scratch / "elsewhere.db";
  std::ofstream(elsewhere).close();
  std::filesystem::permissions(elsewhere, std::filesystem::perms(0644));
  const std::vector<std::function<void()>> obstacles = {
      [&] { ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0); },
      [&] { std::filesystem::create_directory(path); },
      [&] { std::filesystem::create_symlink(elsewhere, path); },
      [&] {
        std::ofstream(path).close();
        ASSERT_EQ(::mkfifo((path + "-journal").c_str(), 0600), 0);
      }};
  for (const auto& obstacle : obstacles) {
    std::filesystem::remove_all(path);
    obstacle();
    lines.clear();
    SqliteSettings settings(path);
    settings.set("key", "value");
    EXPECT_FALSE(settings.value("key"));
    EXPECT_THAT(lines, testing::Contains(HasSubstr("[Error] Save setting failed")));
  }
  EXPECT_EQ(std::filesystem::file_size(elsewhere), 0U);
  EXPECT_EQ(modeOf(elsewhere), 0644U);
}

TEST_F(SqliteSettingsTest, FilesThatWereThereAreMadeTheUsersAlone) {
  SqliteSettings(path).set("key", "value");
  std::ofstream(path + "-journal").close();
  for (const std::string& file : {path, path + "-journal"}) {
    std::filesystem::permissions(file, std::filesystem::perms(0666));
  }
  SqliteSettings settings(path);
  settings.value("key");
  EXPECT_EQ(modeOf(path), 0600U);
  if (std::filesystem::exists(path + "-journal")) {
    EXPECT_EQ(modeOf(path + "-journal"), 0600U);
  }
}

TEST_F(SqliteSettingsTest, TheMaskOfTheProcessDoesNotMatter) {
  for (const mode_t mask : {mode_t{0}, mode_t{0777}}) {
    std::filesystem::remove(path);
    const mode_t before = ::umask(mask);
    SqliteSettings(path).set("key", "value");
    ::umask(before);
    EXPECT_EQ(modeOf(path), 0600U);
  }
}

TEST_F(SqliteSettingsTest, TwoProcessesMayShareTheStore) {
  constexpr int kWrites = 20;
  constexpr std::chrono::seconds kLong(20);  // on a slow disk the other may hold it for a while
  SqliteSettings settings(path);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    SqliteSettings own(path);
    for (int i = 1; i <= kWrites; ++i) own.set("child", std::to_string(i));
    own.keepQueued(kLong);
    ::_exit(own.isReadable() ? 0 : 1);
  }
  for (int i = 1; i <= kWrites; ++i) settings.set("parent", std::to_string(i));
  settings.keepQueued(kLong);
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_THAT(settings.value("child"), Optional(std::to_string(kWrites)));
  EXPECT_THAT(settings.value("parent"), Optional(std::to_string(kWrites)));
  EXPECT_THAT(lines, testing::Each(HasSubstr("is held by another program")));
}

}  // namespace
}  // namespace zovk
