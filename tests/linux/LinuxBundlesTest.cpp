#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "ScratchDirectory.h"
#include "logging/ZPLogger.h"
#include "platform/linux/system/LinuxBundles.h"
#include "platform/linux/system/Paths.h"
#include "platform/linux/system/PosixFileSystem.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Optional;

namespace fs = std::filesystem;

TEST(LinuxBundles, TheMainBundleIsTheProgramsDirectoryByDefault) {
  const PosixFileSystem files;
  const LinuxBundles bundles(files, "");
  EXPECT_EQ(bundles.mainBundle()->resourcePath(),
            fs::read_symlink("/proc/self/exe").parent_path().string());
}

TEST(LinuxBundles, ResourcePathsAreAbsoluteAndEndInNoSlash) {
  const PosixFileSystem files;
  const ScratchDirectory scratch;
  fs::create_directory(scratch / "A.bundle");
  const LinuxBundles bundles(files, scratch.path() + "/");
  EXPECT_EQ(bundles.mainBundle()->resourcePath(), scratch.path());
  EXPECT_EQ(bundles.bundleWithPath(scratch / "x/../A.bundle/"), nullptr);
  EXPECT_EQ(bundles.bundleWithPath(scratch / "./A.bundle/")->resourcePath(), scratch / "A.bundle");
}

TEST(LinuxBundles, ARelativeResourceDirectoryCountsFromTheWorkingDirectory) {
  const PosixFileSystem files;
  const LinuxBundles bundles(files, "resources");
  EXPECT_EQ(bundles.mainBundle()->resourcePath(), (fs::current_path() / "resources").string());
}

TEST(LinuxBundles, TheInstalledResourceBundleStandsInForTheHosts) {
  const PosixFileSystem files;
  const ScratchDirectory scratch;
  const DirectoryBundle bundle(files, scratch.path(), {{"A.bundle", "/installed/A.bundle"}});
  EXPECT_THAT(bundle.pathForResource("A", "bundle"), Optional(std::string("/installed/A.bundle")));
  fs::create_directory(scratch / "A.bundle");
  EXPECT_THAT(bundle.pathForResource("A", "bundle"), Optional(scratch / "A.bundle"));
  EXPECT_FALSE(bundle.pathForResource("B", "bundle"));
}

TEST(LinuxBundles, ABrokenInfoDictionaryIsLoggedOnce) {
  std::vector<std::string> lines;
  LogEnvironment environment;
  environment.writeLine = [&](std::string_view line) { lines.emplace_back(line); };
  ZPLogger::setEnvironment(environment);
  const PosixFileSystem files;
  const ScratchDirectory scratch;
  std::ofstream(scratch / "Info.json") << "{";
  const LinuxBundles bundles(files, scratch.path());
  EXPECT_TRUE(bundles.mainBundle()->infoDictionary().empty());
  EXPECT_TRUE(bundles.mainBundle()->infoDictionary().empty());
  EXPECT_THAT(lines, ElementsAre(HasSubstr("is broken")));
  ZPLogger::setEnvironment({});
}

// Returns what a program in the given folder finds.
std::string foundBy(const fs::path& folder) {
  fs::create_directories(folder);
  fs::copy_file(ZOVKPOPUP_FIND_INSTALLED, folder / "program");
  const std::string told = folder / "told";
  const std::string command = "'" + (folder / "program").string() + "' mark > '" + told + "'";
  EXPECT_EQ(std::system(command.c_str()), 0);
  std::string path;
  std::getline(std::ifstream(told), path);
  return path;
}

void putMarkInto(const fs::path& folder) {
  fs::create_directories(folder);
  std::ofstream(folder / "mark") << "here";
}

TEST(Installed, IsLookedForBesideTheProgram) {
  const ScratchDirectory scratch;
  putMarkInto(scratch / "bin/zovkpopup");
  EXPECT_EQ(foundBy(scratch / "bin"), scratch / "bin/zovkpopup/mark");
}

// Whoever may write somewhere above a game must not be able to put a helper under it.
TEST(Installed, IsNotLookedForInFoldersAbove) {
  const ScratchDirectory scratch;
  putMarkInto(scratch / "zovkpopup");
  putMarkInto(scratch / "game/zovkpopup");
  EXPECT_EQ(foundBy(scratch / "game/bin"), "nothing");
}

}  // namespace
}  // namespace zovk
