#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engine/ZOVKPopupManager.h"
#include "platform/memory/MemoryPlatform.h"
#include "storage/ZOVKPopupFileManager.h"
#include "support/LogMessages.h"
#include "text/Md5.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {

/// A game that drives the popups on a memory platform, through the host's own calls only.
class MemoryHostFixture : public ::testing::Test {
 protected:
  using Answer = std::pair<std::int32_t, std::string>;

  ~MemoryHostFixture() override { ZOVKPopupHost::shutDown(); }

  bool setUp() { return ZOVKPopupHost::setUp(platform_); }
  bool setUpAnew() {
    earlier_.push_back(std::exchange(platform_, std::make_shared<MemoryHostedPlatform>()));
    return setUp();
  }
  MemoryPlatform& memory() { return platform_->memory(); }
  MemoryLog& log() { return memory().log; }

  static ZOVKPopupModel lobby() {
    ZOVKPopupModel popup;
    popup.scene = "lobby";
    popup.scene_type = 1;
    popup.uri = "https://popups.example/lobby";
    popup.sig = md5Hex(popup.uri);
    popup.pop_freq = 2;
    return popup;
  }
  void addLobby() {
    ZOVKPopupManager::sharedInstance()->setMergePopupArr(
        {std::make_shared<const ZOVKPopupModel>(lobby())});
  }
  void showLobby() { showLobby(recordAnswer()); }
  void showLobby(const ZOVKPopupComplete& complete) {
    addLobby();
    ZOVKPopup::showPopup("lobby", 0, complete);
  }
  void pump() { ZOVKPopupHost::pump(std::chrono::seconds(10)); }
  /// Makes the page on screen post the player's choice.
  void choose(const std::string& action) {
    const auto page = memory().userInterface.frontWebView();
    ASSERT_NE(page, nullptr) << "no page is on screen";
    page->postMessage("ZOVKPopup",
                      boost::json::value(R"({"action":")" + action + R"(","msg":""})"));
  }

  ZOVKPopupComplete recordAnswer() {
    return [this](std::int32_t code, const std::string& message) {
      answers_.emplace_back(code, message);
    };
  }
  const std::vector<Answer>& answers() const { return answers_; }

 private:
  std::shared_ptr<MemoryHostedPlatform> platform_ = std::make_shared<MemoryHostedPlatform>();
  std::vector<std::shared_ptr<MemoryHostedPlatform>> earlier_;
  std::vector<Answer> answers_;
};

}  // namespace zovk
