#include <filesystem>
#include <fstream>
#include <vector>

#include <gmock/gmock.h>

#include "ScratchDirectory.h"
#include "logging/ZPLogger.h"
#include "platform/linux/LinuxBundles.h"
#include "platform/linux/Paths.h"
#include "platform/linux/PosixFileSystem.h"

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

TEST(Paths, WhatLiesNearTheLibraryIsFound) {
  const fs::path program = programPath();
  const std::string own = program.parent_path().filename() / program.filename();
  EXPECT_THAT(findNearLibrary(program.filename()), Optional(program.string()));
  EXPECT_THAT(findNearLibrary(own), Optional(program.string()));
  EXPECT_FALSE(findNearLibrary("zovkpopup/no-such-file"));
}

}  // namespace
}  // namespace zovk
