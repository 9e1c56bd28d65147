#include <fstream>

#include <gmock/gmock.h>

#include "ScratchDirectory.h"
#include "platform/linux/system/LinuxDevice.h"

namespace zovk {
namespace {

using testing::MatchesRegex;
using testing::Optional;

constexpr const char* kUuidForm = "[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}";

class LinuxDeviceTest : public testing::Test {
 protected:
  LinuxDevice device(const std::string& application = "game") {
    return {"/home/player/game", application, scratch / "machine-id"};
  }
  void setMachineId(const std::string& id) { std::ofstream(scratch / "machine-id") << id << "\n"; }

  ScratchDirectory scratch;
};

TEST_F(LinuxDeviceTest, TheIdentifierStaysTheSame) {
  setMachineId("0123456789abcdef0123456789abcdef");
  const auto first = device().identifierForVendor();
  EXPECT_THAT(first, Optional(MatchesRegex(kUuidForm)));
  EXPECT_EQ(device().identifierForVendor(), first);
}

TEST_F(LinuxDeviceTest, TheIdentifierTellsApplicationsAndMachinesApart) {
  setMachineId("0123456789abcdef0123456789abcdef");
  const auto first = device("one").identifierForVendor();
  EXPECT_NE(device("two").identifierForVendor(), first);
  setMachineId("fedcba9876543210fedcba9876543210");
  EXPECT_NE(device("one").identifierForVendor(), first);
}

TEST_F(LinuxDeviceTest, AMachineWithoutANumberGetsARandomIdentifier) {
  const auto first = device().identifierForVendor();
  EXPECT_THAT(first, Optional(MatchesRegex(kUuidForm)));
  EXPECT_NE(device().identifierForVendor(), first);
  setMachineId("");
  EXPECT_THAT(device().identifierForVendor(), Optional(MatchesRegex(kUuidForm)));
}

TEST_F(LinuxDeviceTest, TheWindowsShapeStandsForTheOrientation) {
  LinuxDevice one = device();
  EXPECT_EQ(one.statusBarOrientation(), Orientation::kUnknown);
  one.setWindowSize({1280, 720});
  EXPECT_EQ(one.statusBarOrientation(), Orientation::kLandscapeLeft);
  one.setWindowSize({720, 1280});
  EXPECT_EQ(one.statusBarOrientation(), Orientation::kPortrait);
  one.setWindowSize({720, 720});
  EXPECT_EQ(one.statusBarOrientation(), Orientation::kPortrait);
  one.setWindowSize({});
  EXPECT_EQ(one.statusBarOrientation(), Orientation::kUnknown);
  EXPECT_EQ(one.orientation(), Orientation::kUnknown);
}

TEST_F(LinuxDeviceTest, SaysWhatItIs) {
  EXPECT_EQ(device().homeDirectory(), "/home/player/game");
  EXPECT_GT(device().systemMajorVersion(), 10);
  EXPECT_FALSE(device().appStoreHost().empty());
}

}  // namespace
}  // namespace zovk
