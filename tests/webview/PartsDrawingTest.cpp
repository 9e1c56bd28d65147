#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>
#include <stdlib.h>

#include "HelperUnderTest.h"
#include "helper/Drawing.h"
#include "helper/Renderer.h"

namespace zovk::helper {
namespace {

constexpr const char* kGpu = "Mesa Intel(R) UHD Graphics 620 (KBL GT2)";
constexpr const char* kNoGpu = "llvmpipe (LLVM 15.0.6, 256 bits)";

/// The choice on a machine, and the number of times that its driver was asked.
class ChosenDrawing : public testing::Test {
 protected:
  std::string choice(const std::string& asked, bool failedBefore = false) {
    const auto look = [this] {
      ++questions_;
      return renderer_;
    };
    const DrawingChoice choice =
        chooseDrawing({asked, failedBefore, known_}, {[this] { return device_; }, look});
    line_ = choice.line;
    return nameOf(choice.drawing);
  }

  bool device_ = true;
  std::string renderer_ = kGpu;
  std::string known_;
  int questions_ = 0;
  std::string line_;
};

TEST_F(ChosenDrawing, IsHardwareWhereTheDriverIsNoSoftware) {
  EXPECT_EQ(choice(""), "hardware");
  EXPECT_EQ(choice("Auto"), "hardware");
  EXPECT_EQ(line_, "");
  renderer_ = kNoGpu;
  EXPECT_EQ(choice(""), "software");
  renderer_ = "";
  EXPECT_EQ(choice(""), "software") << "a driver that fails";
}

TEST_F(ChosenDrawing, AsksNoDriverWithoutADeviceUnlessItIsToLook) {
  device_ = false;
  EXPECT_EQ(choice(""), "software");
  EXPECT_EQ(choice("auto"), "software");
  EXPECT_EQ(questions_, 0);
  EXPECT_EQ(choice("LOOK"), "hardware");
  EXPECT_EQ(questions_, 1);
}

TEST_F(ChosenDrawing, AsksNoDriverThatAnEarlierHelperHasAsked) {
  known_ = kNoGpu;
  EXPECT_EQ(choice("look"), "software");
  known_ = kGpu;
  renderer_ = kNoGpu;
  EXPECT_EQ(choice(""), "hardware");
  EXPECT_EQ(choice("", true), "software") << "which was lost since";
  EXPECT_EQ(questions_, 0);
}

TEST_F(ChosenDrawing, IsWhatWasAskedForInAnyCase) {
  device_ = false;
  EXPECT_EQ(choice("Hardware"), "hardware");
  EXPECT_EQ(choice("SOFTWARE"), "software");
  EXPECT_EQ(choice("pLAIN"), "plain");
  EXPECT_EQ(questions_, 0);
  EXPECT_EQ(line_, "");
}

TEST_F(ChosenDrawing, IsNoHardwareOnceAHelperWasLost) {
  EXPECT_EQ(choice("", true), "software");
  EXPECT_EQ(choice("look", true), "software");
  EXPECT_EQ(questions_, 0) << "a driver that hangs would be waited for";
  EXPECT_EQ(choice("hardware", true), "software");
  EXPECT_EQ(line_, "helper: drawn in software, since the helper before was lost");
  EXPECT_EQ(choice("plain", true), "plain");
}

TEST_F(ChosenDrawing, IsAutomaticWithALineForAnUnknownWish) {
  EXPECT_EQ(choice("crayons"), "hardware");
  EXPECT_EQ(line_, "helper: no way of drawing is called \"crayons\"");
}

TEST(AskedDrawing, IsThePlayersBeforeTheGames) {
  unsetenv("ZOVKPOPUP_DRAWING");
  EXPECT_EQ(askedDrawing("plain"), "plain");
  setenv("ZOVKPOPUP_DRAWING", "", 1);
  EXPECT_EQ(askedDrawing("plain"), "plain");
  setenv("ZOVKPOPUP_DRAWING", "hardware", 1);
  EXPECT_EQ(askedDrawing("plain"), "hardware");
  unsetenv("ZOVKPOPUP_DRAWING");
}

TEST(Renderer, IsSoftwareByTheNamesOfDriversThatAre) {
  for (const char* name :
       {kNoGpu, "softpipe", "Software Rasterizer", "swrast", "SwiftShader Device (LLVM 10.0.0)",
        "zink (llvmpipe (LLVM 15.0.6, 256 bits))", "virgl (LLVMPIPE (LLVM 12.0.0))",
        "D3D12 (Microsoft Basic Render Driver)"}) {
    EXPECT_TRUE(isSoftwareRenderer(name)) << name;
  }
  for (const char* name : {kGpu, "AMD Radeon Graphics (radeonsi, vangogh)", "Mali-G52 (Panfrost)",
                           "NVIDIA GeForce RTX 3060/PCIe/SSE2", "virgl (AMD Radeon RX 580)",
                           "zink Vulkan 1.3(NVIDIA GeForce)"}) {
    EXPECT_FALSE(isSoftwareRenderer(name)) << name;
  }
}

TEST(GraphicsDevice, IsOneOfTheSystemsOrOfADriverWithAPlaceOfItsOwn) {
  for (const char* name : {"dri", "nvidia0", "nvidiactl", "mali0", "kgsl-3d0", "dxg", "pvr_sync"}) {
    const ScratchDirectory devices;
    std::ofstream(devices.path() / "null") << "";
    std::ofstream(devices.path() / "video0") << "";
    EXPECT_FALSE(holdsGraphicsDevice(devices.path().string()));
    std::ofstream(devices.path() / name) << "";
    EXPECT_TRUE(holdsGraphicsDevice(devices.path().string())) << name;
  }
  EXPECT_FALSE(holdsGraphicsDevice("/nowhere"));
}

/// The driver of the display that tests run on draws in software; it can be given another name.
class AskedRenderer : public testing::Test {
 protected:
  void SetUp() override { unset(); }
  void TearDown() override { unset(); }
  /// Returns a program that runs the command, whatever its arguments are.
  std::string script(const std::string& command) const {
    const std::filesystem::path program = directory_.path() / "program";
    std::ofstream(program) << "#!/bin/sh\n" << command << '\n';
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    return program.string();
  }
  static void unset() {
    for (const char* name : {"force_gl_renderer", "LIBGL_DRIVERS_PATH"}) unsetenv(name);
  }

 private:
  const ScratchDirectory directory_;
};

TEST_F(AskedRenderer, IsTheOneOfTheDriver) {
  EXPECT_TRUE(isSoftwareRenderer(rendererOf(HELPER_PROGRAM, "*")));
  setenv("force_gl_renderer", "Some GPU", 1);
  EXPECT_EQ(rendererOf(HELPER_PROGRAM, "*"), "Some GPU");
  EXPECT_EQ(rendererOf(HELPER_PROGRAM, "x11,*"), "Some GPU");
}

TEST_F(AskedRenderer, IsNoneWithoutADriverThatWorks) {
  setenv("LIBGL_DRIVERS_PATH", "/nowhere", 1);
  EXPECT_EQ(rendererOf(HELPER_PROGRAM, "*"), "");
}

TEST_F(AskedRenderer, IsNoneWhenTheProgramFailsOrNeverEnds) {
  EXPECT_EQ(rendererOf("/nowhere/program", "*"), "");
  EXPECT_EQ(rendererOf("/bin/false", "*"), "");
  EXPECT_EQ(rendererOf(script("echo Some GPU; exit 1"), "*"), "");
  EXPECT_EQ(rendererOf(script("echo Some GPU"), "*"), "Some GPU");
  EXPECT_EQ(rendererOf(script("exec sleep 1000"), "*"), "");
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(rendererOf(script("exec yes"), "*"), "") << "without a bound on what it writes";
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4));
}

TEST_F(AskedRenderer, IsThatOfTheNamedDisplaysOnly) {
  EXPECT_EQ(rendererOf(HELPER_PROGRAM, "broadway"), "");
}

}  // namespace
}  // namespace zovk::helper
