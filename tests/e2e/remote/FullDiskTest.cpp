#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>

#include <sys/resource.h>

#include "e2e/remote/PrivateMounts.h"
#include "e2e/remote/RemoteFixture.h"
#include "linux/ScopedVariable.h"

namespace zovk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kNoMounts = "this machine allows no mounts of one's own";

class FullDisk : public RemoteFixture {
 protected:
  static constexpr int kKilobytes = 64;

  /// Puts a small disk in place of a directory.
  bool mountSmallDisk(const std::filesystem::path& directory) {
    std::filesystem::create_directories(directory);
    disk_.emplace(directory, kKilobytes);
    return disk_->isMounted();
  }
  /// Fails writes in the same place as a full disk does, where no mounts are allowed.
  static void limitFileSizes() {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{kKilobytes * 1024, kKilobytes * 1024};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  }
  void TearDown() override {
    endGame();
    disk_.reset();
  }
  boost::json::array moreThanFits() const {
    boost::json::array popups;
    for (int i = 0; i < 1000; ++i) popups.push_back(conditional("scene", "/check/a"));
    return popups;
  }

 private:
  std::optional<SmallDisk> disk_;
};

TEST_F(FullDisk, AConfigurationThatDoesNotFitLeavesTheOldFileWhole) {
  offer(moreThanFits(), "tomorrow.json");
  startService({"--fault", std::string(kConfigPath) + "=changed:2:tomorrow.json"});
  if (!mountSmallDisk(cachePath())) limitFileSizes();
  letADayPass();
  const std::string yesterday = savedConfig();
  const auto listing = cacheListing();
  startGame();
  await("Start to download remote Popup file");
  endGame();
  EXPECT_TRUE(log().has("Save ZOVKPopupRemote.config done, result:0"));
  EXPECT_FALSE(yesterday.empty());
  EXPECT_EQ(savedConfig(), yesterday);
  EXPECT_EQ(readFile(cachedPage(kPage)), kPage);
  EXPECT_EQ(cacheListing(), listing);
  startGame("");
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
}

TEST_F(FullDisk, APageThatDoesNotFitIsMissingAndTheOthersAreThere) {
  const std::string small = "a small page";
  folder().write("pages/small.html", small);
  folder().write("pages/large.html", std::string(200'000, 'x'));
  offer({pageFile("large", 3, "large.html"), pageFile("small", 4, "small.html")});
  startService();
  if (!mountSmallDisk(cachePath())) GTEST_SKIP() << kNoMounts;
  startGame();
  awaitPages(1);
  await(".html done, result:0");
  EXPECT_FALSE(ZOVKPopup::havePopup(3));
  EXPECT_TRUE(ZOVKPopup::havePopup(4));
  EXPECT_EQ(readFile(cachedPage(small, 4)), small);
  EXPECT_EQ(cacheListing().size(), 2U) << "nothing half written is left";
  EXPECT_EQ(answers().size(), 0U);
  ZOVKPopup::showPopup("large", 0, recordAnswer());
  EXPECT_EQ(answers(), (std::vector<Answer>{{-1, "No valid Popup now"}}));
}

TEST_F(FullDisk, ADownloadThatFindsNoRoomKeepsTheOldPage) {
  startService();
  if (!mountSmallDisk(home() / "tmp")) GTEST_SKIP() << kNoMounts;
  const ScopedVariable temporary("TMPDIR", (home() / "tmp").string());
  letADayPass();
  folder().write("pages/lobby.html", std::string(200'000, 'x'));
  startGame();
  await("/pages/lobby.html");
  const std::string uri = base() + "/pages/lobby.html";
  EXPECT_THAT(log().errors(), ElementsAre("Download from url:" + uri +
                                              ", error:temporary file: No space left on device",
                                          "Download file failed, uri:" + uri));
  EXPECT_EQ(readFile(cachedPage(kPage)), kPage);
}

TEST_F(FullDisk, SettingsThatFindNoRoomAreToldOfAndTheGameGoesOn) {
  startService();
  const auto preferences = settingsPath().parent_path();
  if (!mountSmallDisk(preferences)) GTEST_SKIP() << kNoMounts;
  std::ofstream(preferences / "filler") << std::string(kKilobytes * 1024, 'f') << std::flush;
  startGame();
  awaitPages(1);
  EXPECT_THAT(log().errors(), ElementsAre("Read setting failed, error:database or disk is full",
                                          "Save setting failed, error:database or disk is full"));
  EXPECT_TRUE(ZOVKPopup::havePopup(kRemoteType));
}

}  // namespace
}  // namespace zovk
