#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/object.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "engine/LoggerSetUp.h"
#include "logging/ZPLogger.h"
#include "platform/memory/MemoryPlatform.h"

namespace zovk {

/// The logger of a host whose packaging a test writes. The debug switch is decided once in the life
/// of a process, so each test needs its own process.
class LoggerFixture : public ::testing::Test {
 protected:
  LoggerFixture() { setUpLogger(memory_->shared(), memory_->sharedLog()); }

  MemoryPlatform& memory() { return *memory_; }
  std::vector<std::string> lines() const { return memory_->log.lines(); }

  void setInfo(const boost::json::object& info) { memory_->bundles.setMainInfo(info); }
  void addSettingBundle() { memory_->files.addDirectory(kSettingBundle); }
  void addSettingFile(std::string_view text) { memory_->files.addFile(kSettingFile, text); }
  static void writeDebugLine() { ZPLogger::ZPLog(0, "Game", "Game::start", 7, "hello"); }

  static constexpr const char* kSettingBundle = "/app/ZOVKAppSetting.bundle";
  static constexpr const char* kSettingFile = "/app/ZOVKAppSetting.bundle/ZOVKConfig.ini";
  static constexpr const char* kRead = "Get Config File";
  static constexpr const char* kFound = "Success get ZOVK_DEBUG";
  static constexpr const char* kDebugLine = "[Debug]Game Game::start 7 hello";

 private:
  std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
};

}  // namespace zovk
