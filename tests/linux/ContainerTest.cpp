#include <filesystem>
#include <fstream>
#include <optional>
#include <vector>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "ScopedVariable.h"
#include "ScratchDirectory.h"
#include "platform/linux/system/Container.h"
#include "platform/linux/system/Paths.h"

namespace zovk {
namespace {

using testing::Each;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace fs = std::filesystem;

class LinesLog : public PlatformLog {
 public:
  void writeLine(std::string_view line) override { lines.emplace_back(line); }
  std::vector<std::string> lines;
};

mode_t modeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(::stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777U;
}

ZOVKPopupHostSettings named(const std::string& application) {
  ZOVKPopupHostSettings settings;
  settings.applicationId = application;
  return settings;
}

TEST(Container, IsNamedByTheApplicationOrTheProgram) {
  EXPECT_EQ(applicationId(named("org.example.Game-2_b")), "org.example.Game-2_b");
  EXPECT_EQ(applicationId({}), fs::path(programPath()).filename().string());
}

TEST(Container, ItsNameCannotLeadElsewhere) {
  EXPECT_EQ(applicationId(named("../a b/\xc3\xa9")), ".._a_b___");
  EXPECT_EQ(applicationId(named("..")), "zovkpopup-game");
  EXPECT_EQ(applicationId(named(".")), "zovkpopup-game");
}

TEST(Container, LiesBelowTheUsersDataDirectory) {
  {
    const ScopedVariable data("XDG_DATA_HOME", "/data");
    EXPECT_EQ(containerDirectory(named("game")), "/data/game");
  }
  const ScopedVariable home("HOME", "/home/player");
  for (const std::optional<std::string>& useless :
       {std::optional<std::string>(), std::optional<std::string>("relative")}) {
    const ScopedVariable data("XDG_DATA_HOME", useless);
    EXPECT_EQ(containerDirectory(named("game")), "/home/player/.local/share/game");
  }
}

TEST(Container, LiesInTheHomeOfTheUserWhoseEnvironmentIsEmpty) {
  const ScopedVariable home("HOME", std::nullopt);
  const ScopedVariable data("XDG_DATA_HOME", std::nullopt);
  EXPECT_THAT(containerDirectory(named("game")), HasSubstr("/.local/share/game"));
}

TEST(Container, TheHostMayPutItElsewhere) {
  ZOVKPopupHostSettings settings = named("game");
  settings.dataDirectory = "/elsewhere//b/../a/";
  EXPECT_EQ(containerDirectory(settings), "/elsewhere/a");
  settings.dataDirectory = "here";
  EXPECT_EQ(containerDirectory(settings), (fs::current_path() / "here").string());
}

TEST(Container, IsMadeForTheUserAloneWithThoseAboveIt) {
  const ScratchDirectory scratch;
  LinesLog log;
  makeContainer(scratch / "above/game", log);
  for (const char* name : {"above", "above/game", "above/game/Library", "above/game/Library/Caches",
                           "above/game/Library/Preferences"}) {
    EXPECT_EQ(modeOf(scratch / name), 0700U);
  }
  makeContainer(scratch / "above/game", log);
  EXPECT_THAT(log.lines, IsEmpty());
}

TEST(Container, ItsPartsAreTheUsersAloneThoughTheyWereThereBefore) {
  const ScratchDirectory scratch;
  LinesLog log;
  const std::vector<std::string> parts = {"Library", "Library/Caches", "Library/Preferences",
                                          "Library/Caches/ZOVKPopup"};
  for (const std::string& part : parts) {
    fs::create_directories(scratch / part);
    fs::permissions(scratch / part, fs::perms(0777));
  }
  makeContainer(scratch.path(), log);
  for (const std::string& part : parts) EXPECT_EQ(modeOf(scratch / part), 0700U) << part;
}

TEST(Container, APartThatIsALinkKeepsWhatItLeadsToAsItIs) {
  const ScratchDirectory scratch;
  LinesLog log;
  fs::create_directories(scratch / "game/Library/Caches");
  fs::create_directory(scratch / "documents");
  fs::permissions(scratch / "documents", fs::perms(0755));
  fs::create_directory_symlink(scratch / "documents", scratch / "game/Library/Caches/ZOVKPopup");
  makeContainer(scratch / "game", log);
  EXPECT_EQ(modeOf(scratch / "documents"), 0755U);
}

TEST(Container, IsTheUsersAloneWhateverTheMaskOfTheProcess) {
  for (const mode_t mask : {mode_t{0}, mode_t{0777}}) {
    const ScratchDirectory scratch;
    LinesLog log;
    const mode_t before = ::umask(mask);
    makeContainer(scratch / "game", log);
    ::umask(before);
    for (const char* part : {"game", "game/Library", "game/Library/Caches"}) {
      EXPECT_EQ(modeOf(scratch / part), 0700U) << part;
    }
  }
}

TEST(Container, ADirectoryThatWasThereBeforeKeepsItsMode) {
  const ScratchDirectory scratch;
  LinesLog log;
  fs::create_directory(scratch / "game");
  fs::permissions(scratch / "game", fs::perms(0755));
  makeContainer(scratch / "game", log);
  EXPECT_EQ(modeOf(scratch / "game"), 0755U);
}

TEST(Container, WhatCannotBeMadeIsLogged) {
  const ScratchDirectory scratch;
  LinesLog log;
  std::ofstream(scratch / "file") << "in the way";
  makeContainer(scratch / "file/game", log);
  EXPECT_THAT(log.lines, Not(IsEmpty()));
  EXPECT_THAT(log.lines, Each(HasSubstr("[Error] Create container directory:")));
}

}  // namespace
}  // namespace zovk
