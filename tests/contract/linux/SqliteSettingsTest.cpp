#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ScratchDirectory.h"
#include "logging/ZPLogger.h"
#include "platform/linux/SqliteSettings.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Optional;

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

TEST_F(SqliteSettingsTest, AStoreThatAnotherProgramLocksIsWaitedForTwoSecondsAtMost) {
  SqliteSettings settings(path);
  settings.set("key", "old");
  const SqliteDatabase other = openDirectly();
  ASSERT_EQ(sqlite3_exec(other.get(), "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
  const auto start = std::chrono::steady_clock::now();
  settings.set("key", "new");
  const auto waited = std::chrono::steady_clock::now() - start;
  EXPECT_GT(waited, std::chrono::milliseconds(1500));
  EXPECT_LT(waited, std::chrono::milliseconds(8000));
  EXPECT_THAT(lines, ElementsAre(HasSubstr("database is locked")));
  ASSERT_EQ(sqlite3_exec(other.get(), "ROLLBACK", nullptr, nullptr, nullptr), SQLITE_OK);
  EXPECT_THAT(settings.value("key"), Optional(std::string("old")));
  settings.set("key", "new");
  EXPECT_THAT(settings.value("key"), Optional(std::string("new")));
}

TEST_F(SqliteSettingsTest, TwoProcessesMayShareTheStore) {
  constexpr int kWrites = 20;
  SqliteSettings settings(path);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    SqliteSettings own(path);
    for (int i = 1; i <= kWrites; ++i) own.set("child", std::to_string(i));
    ::_exit(lines.empty() ? 0 : 1);
  }
  for (int i = 1; i <= kWrites; ++i) settings.set("parent", std::to_string(i));
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_THAT(settings.value("child"), Optional(std::to_string(kWrites)));
  EXPECT_THAT(settings.value("parent"), Optional(std::to_string(kWrites)));
  EXPECT_THAT(lines, IsEmpty());
}

}  // namespace
}  // namespace zovk
