#include "unit/storage/StorageFixture.h"

namespace zovk {
namespace {

using ::testing::ElementsAre;
using InstallIdentifier = StorageFixture;

constexpr const char* kFirst = "0A1B2C3D-4E5F-4678-9ABC-DEF012345678";
constexpr const char* kOther = "FFFFFFFF-4E5F-4678-9ABC-DEF012345678";

TEST_F(InstallIdentifier, IsTakenFromTheDeviceAndKept) {
  EXPECT_EQ(fileManager().getUUID(), kFirst);
  EXPECT_EQ(memory().settings.saved(), (std::map<std::string, std::string>{{"uuid", kFirst}}));
  const std::string text = kFirst;
  EXPECT_THAT(lines(), ElementsAre("D valueForKey: Get value for key:uuid",
                                   "D valueForKey: No value for key:uuid",
                                   "D saveValue: Save value:" + text + " for key:uuid",
                                   "D saveValue: Save value:" + text + " for key:uuid done",
                                   "D getUUID: UUID:" + text));
}

TEST_F(InstallIdentifier, StaysTheSameWhenTheDevicesOwnChanges) {
  fileManager().getUUID();
  log().clear();
  memory().device.setIdentifierForVendor(kOther);
  EXPECT_EQ(fileManager().getUUID(), kFirst);
  const std::string text = kFirst;
  EXPECT_THAT(lines(), ElementsAre("D valueForKey: Get value for key:uuid",
                                   "D valueForKey: Got value:" + text + " for key:uuid",
                                   "D getUUID: UUID:" + text));
}

TEST_F(InstallIdentifier, ThatCannotBeReadNowIsNotReplaced) {
  fileManager().getUUID();
  memory().device.setIdentifierForVendor(kOther);
  memory().settings.setLocked(true);
  EXPECT_EQ(fileManager().getUUID(), kOther) << "for this once";
  memory().settings.setLocked(false);
  EXPECT_EQ(fileManager().getUUID(), kFirst);
}

TEST_F(InstallIdentifier, StaysTheSameForAFreshObject) {
  fileManager().getUUID();
  memory().device.setIdentifierForVendor(kOther);
  ZOVKPopupFileManager::purgeSharedInstance();
  EXPECT_EQ(fileManager().getUUID(), kFirst);
}

TEST_F(InstallIdentifier, IsAbsentWhileTheDeviceHasNone) {
  memory().device.setIdentifierForVendor(std::nullopt);
  EXPECT_EQ(fileManager().getUUID(), std::nullopt);
  EXPECT_TRUE(memory().settings.all().empty());
  EXPECT_THAT(
      lines(),
      ElementsAre("D valueForKey: Get value for key:uuid", "D valueForKey: No value for key:uuid",
                  "D saveValue: Save value:(null) for key:uuid",
                  "D saveValue: Remove value for key:uuid done", "D getUUID: UUID:(null)"));
}

TEST_F(InstallIdentifier, IsAskedForAgainAfterTheDeviceHadNone) {
  memory().device.setIdentifierForVendor(std::nullopt);
  fileManager().getUUID();
  memory().device.setIdentifierForVendor(kOther);
  EXPECT_EQ(fileManager().getUUID(), kOther);
  EXPECT_EQ(memory().settings.saved(), (std::map<std::string, std::string>{{"uuid", kOther}}));
}

TEST_F(InstallIdentifier, IsStillGivenWhenItCannotBeKept) {
  memory().settings.loseWrites(true);
  EXPECT_EQ(fileManager().getUUID(), kFirst);
  EXPECT_TRUE(memory().settings.all().empty());
}

TEST_F(InstallIdentifier, IsWhatTheHostStoredBefore) {
  memory().settings.set("uuid", kOther);
  EXPECT_EQ(fileManager().getUUID(), kOther);
}

}  // namespace
}  // namespace zovk
