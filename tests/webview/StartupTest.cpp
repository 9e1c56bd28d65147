#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include <boost/json/array.hpp>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "PopupScreen.h"

namespace zovk {
namespace {

/// Inode numbers of the sockets that a process holds.
std::set<std::string> socketsOf(pid_t pid) {
  std::set<std::string> inodes;
  const std::string folder = "/proc/" + std::to_string(pid) + "/fd";
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    std::error_code error;
    const std::string target = std::filesystem::read_symlink(entry.path(), error).string();
    const std::string prefix = "socket:[";
    if (target.starts_with(prefix)) {
      inodes.insert(target.substr(prefix.size(), target.size() - prefix.size() - 1));
    }
  }
  return inodes;
}

/// Inode numbers of the sockets in one of the kernel's tables that listen.
std::set<std::string> listening(const std::string& table, std::size_t stateColumn,
                                const std::string& state, std::size_t inodeColumn) {
  std::set<std::string> inodes;
  std::ifstream file("/proc/self/net/" + table);
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::vector<std::string> columns;
    for (std::string word; words >> word;) columns.push_back(word);
    if (columns.size() > inodeColumn && columns[stateColumn] == state) {
      inodes.insert(columns[inodeColumn]);
    }
  }
  return inodes;
}

std::set<std::string> allListening() {
  std::set<std::string> result = listening("tcp", 3, "0A", 9);
  result.merge(listening("tcp6", 3, "0A", 9));
  result.merge(listening("unix", 3, "00010000", 6));
  return result;
}

bool holdsADatabase(const std::filesystem::path& directory) {
  if (!std::filesystem::exists(directory)) return false;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory)) {
    if (entry.path().filename() == "IndexedDB.sqlite3") return true;
  }
  return false;
}

TEST(HelperStart, AnswersTheGreetingWithTheScreen) {
  const HelperUnderTest helper;
  EXPECT_EQ(helper.ready().at("version"), 1);
  const boost::json::array& screen = helper.ready().at("screen").as_array();
  ASSERT_EQ(screen.size(), 4U);
  EXPECT_GT(screen[2].to_number<int>(), 0);
  EXPECT_GT(screen[3].to_number<int>(), 0);
  EXPECT_TRUE(helper.ready().at("schemes").is_array());
}

TEST(HelperStart, TellsTheSchemesThatProgramsOpen) {
  const ScratchDirectory home;
  std::filesystem::create_directories(home.path() / "applications");
  std::ofstream(home.path() / "applications/shop.desktop")
      << "[Desktop Entry]\nType=Application\nName=Shop\nExec=true %u\n"
         "MimeType=x-scheme-handler/zovkshop;\n";
  std::ofstream(home.path() / "applications/mimeinfo.cache")
      << "[MIME Cache]\nx-scheme-handler/zovkshop=shop.desktop;\n";
  HelperUnderTest helper(HelperUnderTest::Start::kGreeted,
                         {"XDG_DATA_HOME=" + home.path().string()});
  const boost::json::array expected{"zovkshop"};
  EXPECT_EQ(helper.ready().at("schemes"), expected);
  PopupScreen(helper).createWebView();  // nothing is opened for nobody
  helper.send({{"type", "url.open"}, {"id", 1}, {"url", "zovkshop://item/1"}});
  helper.await("url.opened", {{"id", 1}, {"opened", true}});
}

TEST(HelperStart, OpensNoAddressThatNoProgramOpens) {
  HelperUnderTest helper;
  PopupScreen(helper).createWebView();
  helper.send({{"type", "url.open"}, {"id", 1}, {"url", "zovkunknown://item/1"}});
  helper.await("url.opened", {{"id", 1}, {"opened", false}});
  EXPECT_FALSE(helper.came("log")) << "the limit on openings has nothing to do with it";
}

TEST(HelperStart, SaysWhyItCannotShowWindowsAndEnds) {
  HelperUnderTest helper(HelperUnderTest::Start::kSilent, {"DISPLAY", "WAYLAND_DISPLAY"});
  helper.send(helper.greeting());
  EXPECT_FALSE(helper.await("failed").at("reason").as_string().empty());
  EXPECT_EQ(helper.awaitEnd(), 0);
}

TEST(HelperStart, RefusesAnotherVersion) {
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  HelperMessage greeting = helper.greeting();
  greeting["version"] = 2;
  helper.send(greeting);
  helper.await("failed");
  EXPECT_EQ(helper.awaitEnd(), 0);
}

TEST(HelperStart, TakesNoCommandBeforeTheGreeting) {
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  helper.send({{"type", "window.show"}, {"window", 1}});
  EXPECT_EQ(helper.await("log").at("line"), "helper: command \"window.show\" skipped: no greeting");
  helper.send(helper.greeting());
  helper.await("ready");
}

TEST(HelperStart, TakesCommandsThatComeBeforeItIsReadyInOrder) {
  HelperUnderTest helper(HelperUnderTest::Start::kSilent);
  helper.send(helper.greeting());
  helper.send({{"type", "sync"}, {"id", 1}, {"window", 1}});
  helper.send({{"type", "sync"}, {"id", 2}, {"window", 1}});
  EXPECT_EQ(helper.await("synced").at("id"), 1);
  EXPECT_EQ(helper.await("synced").at("id"), 2);
  helper.await("ready");
}

TEST(HelperStart, WorksWithoutASessionBus) {
  const HelperUnderTest helper(HelperUnderTest::Start::kGreeted, {"DBUS_SESSION_BUS_ADDRESS"});
  EXPECT_EQ(helper.ready().at("version"), 1);
}

TEST(HelperStart, ListensNowhere) {
  const HelperUnderTest helper;
  const std::set<std::string> listeners = allListening();
  const std::set<std::string> sockets = socketsOf(helper.pid());
  ASSERT_FALSE(sockets.empty());
  for (const std::string& socket : sockets) EXPECT_FALSE(listeners.contains(socket)) << socket;
}

TEST(HelperStart, KeepsWhatPagesStoreInTheDirectoryOfTheGame) {
  HelperUnderTest helper;
  PopupScreen screen(helper);
  screen.createWebView();
  screen.loadPage("plain.html");
  screen.evaluate(
      "document.title = 'storing'; var request = indexedDB.open('kept');"
      "request.onsuccess = () => document.title = 'stored';"
      "request.onerror = () => document.title = 'refused'; 0");
  while (screen.evaluate("document.title") == "storing") helper.sync();
  EXPECT_EQ(screen.evaluate("document.title"), "stored");
  EXPECT_TRUE(holdsADatabase(helper.directory() / "webhost/data"));
}

}  // namespace
}  // namespace zovk
