#include <string>

#include <gtest/gtest.h>

#include "platform/memory/MemoryBundles.h"
#include "platform/memory/MemoryDevice.h"
#include "platform/memory/MemoryLog.h"
#include "platform/memory/MemorySettings.h"

namespace zovk {
namespace {

TEST(MemoryBundles, OpensTheResourceBundleOfTheMainBundle) {
  MemoryFileSystem files;
  MemoryBundles bundles(files);
  bundles.addResource("page.html", "<p>");
  const auto path = bundles.mainBundle()->pathForResource("ZOVKPopupResource", "bundle");
  ASSERT_TRUE(path);
  const auto bundle = bundles.bundleWithPath(*path);
  ASSERT_TRUE(bundle);
  EXPECT_EQ(bundle->resourcePath(), "/app/ZOVKPopupResource.bundle");
  EXPECT_EQ(bundle->pathForResource("page", "html"), *path + "/page.html");
  EXPECT_FALSE(bundle->pathForResource("page", "txt"));
  EXPECT_FALSE(bundle->pathForResource("", ""));
}

TEST(MemoryBundles, HasNoBundleWhereNoDirectoryIs) {
  MemoryFileSystem files;
  MemoryBundles bundles(files);
  files.addFile("/app/file.bundle", "");
  EXPECT_FALSE(bundles.bundleWithPath("/app/file.bundle"));
  EXPECT_FALSE(bundles.bundleWithPath("/app/missing.bundle"));
  bundles.removeResourceBundle();
  EXPECT_FALSE(bundles.mainBundle()->pathForResource("ZOVKPopupResource", "bundle"));
  files.take("/app");
  EXPECT_TRUE(bundles.mainBundle());
}

TEST(MemoryBundles, ReadsTheInfoDictionaryOrHasAnEmptyOne) {
  MemoryFileSystem files;
  MemoryBundles bundles(files);
  EXPECT_TRUE(bundles.mainBundle()->infoDictionary().empty());
  bundles.setMainInfo({{"ZOVK_DEBUG", true}});
  const auto bundle = bundles.mainBundle();
  EXPECT_TRUE(boolValue(bundle->infoDictionary(), "ZOVK_DEBUG"));
  files.addFile("/app/Info.json", "[broken");
  EXPECT_TRUE(bundles.mainBundle()->infoDictionary().empty());
  EXPECT_TRUE(boolValue(bundle->infoDictionary(), "ZOVK_DEBUG"));  // an open bundle stays
}

TEST(MemorySettings, KeepsWhatWasSetAndTellsWhatIsSaved) {
  MemorySettings settings;
  settings.set("a", "1");
  settings.set("b", "2");
  settings.remove("b");
  EXPECT_EQ(settings.value("a"), "1");
  EXPECT_FALSE(settings.value("b"));
  EXPECT_TRUE(settings.saved().empty());
  settings.synchronize();
  EXPECT_EQ(settings.saved().at("a"), "1");
  EXPECT_EQ(settings.synchronizeCount(), 1);
  settings.set("a", "3");
  settings.dropUnsaved();
  EXPECT_EQ(settings.value("a"), "1");
}

TEST(MemorySettings, LosesWritesWhenToldTo) {
  MemorySettings settings;
  settings.set("a", "1");
  settings.loseWrites(true);
  settings.set("a", "2");
  settings.remove("a");
  EXPECT_EQ(settings.all().at("a"), "1");
}

TEST(MemoryDevice, SaysWhatWasSet) {
  MemoryDevice device;
  EXPECT_EQ(device.homeDirectory(), "/home/player");
  EXPECT_EQ(device.identifierForVendor().value_or("").size(), 36u);
  device.setHomeDirectory("/elsewhere");
  device.setIdentifierForVendor(std::nullopt);
  device.setSystemMajorVersion(10);
  device.setAppStoreHost("shop.example");
  device.setOrientation(Orientation::kFaceUp);
  device.setStatusBarOrientation(Orientation::kLandscapeLeft);
  EXPECT_EQ(device.homeDirectory(), "/elsewhere");
  EXPECT_FALSE(device.identifierForVendor());
  EXPECT_EQ(device.systemMajorVersion(), 10);
  EXPECT_EQ(device.appStoreHost(), "shop.example");
  EXPECT_EQ(device.orientation(), Orientation::kFaceUp);
  EXPECT_EQ(device.statusBarOrientation(), Orientation::kLandscapeLeft);
}

TEST(MemoryLog, FindsLinesByTheirText) {
  MemoryLog log;
  log.writeLine("one apple");
  log.writeLine("two apples");
  log.writeLine("pear");
  EXPECT_EQ(log.lines().size(), 3u);
  EXPECT_EQ(log.count("apple"), 2u);
  EXPECT_EQ(log.linesContaining("pear"), std::vector<std::string>{"pear"});
  EXPECT_FALSE(log.contains("plum"));
  log.clear();
  EXPECT_TRUE(log.lines().empty());
}

TEST(MemoryLog, TakesTheLinesOfTheLogger) {
  MemoryLog log;
  ZPLogger::setEnvironment(memoryLogEnvironment(log, true));
  ZPLogger::ZPLog(0, "File", "function", 7, "value %d", 3);
  ZPLogger::ZPLog(0, "bad %@", "news");
  EXPECT_TRUE(log.contains("[Debug]File function 7 value 3"));
  EXPECT_TRUE(log.contains("[Error] bad news"));
  ZPLogger::setEnvironment({});
}

TEST(MemoryLog, LeavesDebugLinesOutWhenTheyAreOff) {
  const LogEnvironment environment = memoryLogEnvironment(MemoryLog(), false);
  EXPECT_FALSE(environment.infoFlag("ZOVK_DEBUG"));
  EXPECT_TRUE(memoryLogEnvironment(MemoryLog(), true).infoFlag("ZOVK_DEBUG"));
}

}  // namespace
}  // namespace zovk
