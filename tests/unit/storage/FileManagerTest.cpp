#include <thread>

#include <gmock/gmock.h>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogLines.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;

class FileManager : public EngineFixture {
 protected:
  FileManager() {
    ZPLogger::ZPLog(0, "FileManager", "FileManager::start", 1, "the switch is decided");
    log().clear();
  }
  std::vector<std::string> lines() { return shortLines(log()); }
};

TEST_F(FileManager, MakesItsDirectoryOnFirstUse) {
  EXPECT_EQ(fileManager().getInternalFileRootPath(), kCache);
  EXPECT_TRUE(memory().files.isDirectory(kCache));
  EXPECT_THAT(lines(), ElementsAre("D init: Create directory:" + std::string(kCache)));
}

TEST_F(FileManager, LeavesADirectoryThatIsThereAsItIs) {
  addCacheFile("a.html", "a");
  fileManager();
  EXPECT_EQ(memory().files.text(std::string(kCache) + "/a.html"), "a");
  EXPECT_TRUE(lines().empty());
}

TEST_F(FileManager, PutsItsDirectoryBelowTheHomeDirectory) {
  memory().device.setHomeDirectory("/home/other");
  memory().files.addDirectory("/home/other/Library/Caches");
  EXPECT_EQ(fileManager().getInternalFileRootPath(), "/home/other/Library/Caches/ZOVKPopup");
  EXPECT_TRUE(memory().files.isDirectory("/home/other/Library/Caches/ZOVKPopup"));
}

TEST_F(FileManager, GoesOnWithoutADirectoryThatCannotBeMade) {
  memory().files.failCreateDirectory(kCache, std::errc::permission_denied);
  EXPECT_EQ(fileManager().getInternalFileRootPath(), kCache);
  EXPECT_THAT(lines(), ElementsAre("D init: Create directory:" + std::string(kCache),
                                   "E Create directory failed, error:Permission denied"));
  log().clear();
  fileManager();
  EXPECT_TRUE(lines().empty()) << "making it is not tried again";
}

TEST_F(FileManager, MakesNoDirectoriesAboveItsOwn) {
  memory().files.take("/home/player/Library/Caches");
  fileManager();
  EXPECT_FALSE(memory().files.isDirectory("/home/player/Library/Caches"));
  EXPECT_THAT(lines(), ElementsAre("D init: Create directory:" + std::string(kCache),
                                   "E Create directory failed, error:No such file or directory"));
}

TEST_F(FileManager, DoesNotTouchAFileInThePlaceOfItsDirectory) {
  memory().files.addFile(kCache, "a file");
  EXPECT_FALSE(fileManager().saveInternalFile("a.html", "a", false));
  EXPECT_FALSE(fileManager().saveInternalFile("a.html", "a", true));
  EXPECT_FALSE(fileManager().readInternalFile("a.html", nullptr, nullptr));
  fileManager().deleteInternalFileWithout(std::nullopt);
  EXPECT_EQ(memory().files.text(kCache), "a file");
}

TEST_F(FileManager, IsOneObject) {
  ZOVKPopupFileManager* const first = ZOVKPopupFileManager::sharedInstance();
  EXPECT_EQ(ZOVKPopupFileManager::sharedInstance(), first);
  EXPECT_EQ(ZOVKPopupFileManager::sharedInstanceSynch(), first);
  EXPECT_EQ(ZOVKPopupFileManager::sharedInstanceNoSynch(), first);
  EXPECT_EQ(ZOVKPopupFileManager::allocWithZone(), first);
  EXPECT_EQ(first->copyWithZone(), first);
}

TEST_F(FileManager, IsOneObjectHoweverOftenItIsAllocated) {
  EXPECT_EQ(ZOVKPopupFileManager::sharedInstanceNoSynch(), nullptr);
  ZOVKPopupFileManager* const first = ZOVKPopupFileManager::allocWithZone();
  ASSERT_NE(first, nullptr);
  EXPECT_EQ(ZOVKPopupFileManager::allocWithZone(), first);
  EXPECT_EQ(ZOVKPopupFileManager::sharedInstance(), first);
}

TEST_F(FileManager, WritesNowhereBeforeItKnowsItsDirectory) {
  const auto before = memory().files.list("/");
  EXPECT_FALSE(ZOVKPopupFileManager::allocWithZone()->saveInternalFile("a.html", "a", false));
  EXPECT_EQ(memory().files.list("/"), before);
}

TEST_F(FileManager, IsMadeAfreshAfterAPurge) {
  fileManager();
  memory().files.take(kCache);
  ZOVKPopupFileManager::purgeSharedInstance();
  EXPECT_EQ(ZOVKPopupFileManager::sharedInstanceNoSynch(), nullptr);
  fileManager();
  EXPECT_TRUE(memory().files.isDirectory(kCache)) << "the fresh object has made its directory";
}

TEST_F(FileManager, IsAbsentWithoutAPlatform) {
  setCurrentPlatform(nullptr);
  EXPECT_EQ(ZOVKPopupFileManager::sharedInstance(), nullptr);
}

TEST_F(FileManager, IsOneObjectForManyThreads) {
  std::vector<ZOVKPopupFileManager*> seen(16);
  std::vector<std::thread> threads;
  for (auto& manager : seen) {
    threads.emplace_back([&manager] { manager = ZOVKPopupFileManager::sharedInstance(); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(seen, std::vector<ZOVKPopupFileManager*>(16, &fileManager()));
  EXPECT_EQ(log().count("Create directory:"), 1U);
}

}  // namespace
}  // namespace zovk
