#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "engine/ZOVKPopupManager.h"
#include "host/LoggerSetUp.h"
#include "platform/memory/MemoryPlatform.h"
#include "storage/ZOVKPopupFileManager.h"
#include "text/Md5.h"
#include "zovkpopup/platform/CurrentPlatform.h"

namespace zovk {

/// The arguments of a host's callback.
using Answer = std::pair<std::int32_t, std::string>;

/// The engine on a memory platform, with debug lines on. The first use makes the shared objects, so
/// that a test can write files before.
class EngineFixture : public ::testing::Test {
 protected:
  static constexpr const char* kCache = "/home/player/Library/Caches/ZOVKPopup";
  static constexpr const char* kBundle = "/app/ZOVKPopupResource.bundle";

  EngineFixture() {
    memory_->bundles.setMainInfo({{"ZOVK_DEBUG", true}});
    setDefaultPlatform(nullptr);  // no test must use the platform that is linked in
    setUpLogger(memory_->shared(), memory_->sharedLog());
    setCurrentPlatform(memory_->shared());
  }

  ~EngineFixture() override {
    if (auto* const manager = ZOVKPopupManager::sharedInstanceNoSynch()) {
      manager->stopWork();
      manager->stopCheckKeyWindow();
      manager->releasePopupWindow();
    }
    memory_->shutDown();
    ZOVKPopupManager::purgeSharedInstance();
    ZOVKPopupFileManager::purgeSharedInstance();
    setCurrentPlatform(nullptr);
  }

  ZOVKPopupManager& engine() { return *ZOVKPopupManager::sharedInstance(); }
  ZOVKPopupFileManager& fileManager() { return *ZOVKPopupFileManager::sharedInstance(); }
  MemoryPlatform& memory() { return *memory_; }
  MemoryLog& log() { return memory_->log; }

  /// Runs everything that is ready on the main queue.
  void settle() { memory_->settle(); }

  void addCacheFile(const std::string& name, const std::string& text) {
    memory_->files.addFile(std::string(kCache) + "/" + name, text);
  }
  void addResource(const std::string& name, const std::string& text) {
    memory_->files.addFile(std::string(kBundle) + "/" + name, text);
  }

  /// Returns a web-page popup that is valid for every player at any time.
  static ZOVKPopupModel webPage(const std::string& scene, std::uint64_t sceneType = 1) {
    ZOVKPopupModel popup;
    popup.scene = scene;
    popup.scene_type = sceneType;
    popup.uri = "https://popups.example/" + scene;
    popup.sig = md5Hex(popup.uri);
    popup.pop_freq = 2;
    return popup;
  }
  /// Returns a downloaded page-file popup, and puts its file into the cache.
  ZOVKPopupModel pageFile(const std::string& scene, std::uint64_t sceneType = 1) {
    ZOVKPopupModel popup;
    popup.scene = scene;
    popup.scene_type = sceneType;
    popup.content_type = 1;
    popup.sig = md5Hex("page of " + scene);
    popup.pop_freq = 2;
    addCacheFile(popup.getPopupFileName(), "page of " + scene);
    return popup;
  }
  /// Returns a web-page popup whose service is asked first, and to which the player's choice is
  /// reported.
  static ZOVKPopupModel conditional(const std::string& scene, std::uint64_t sceneType = 1) {
    ZOVKPopupModel popup = webPage(scene, sceneType);
    popup.pop_freq = 3;
    popup.check_url = "https://check.example/" + scene;
    popup.report_url = "https://report.example/" + scene;
    return popup;
  }
  static PopupList listOf(std::vector<ZOVKPopupModel> popups) {
    PopupList list;
    for (ZOVKPopupModel& popup : popups) {
      list.push_back(std::make_shared<const ZOVKPopupModel>(std::move(popup)));
    }
    return list;
  }

  /// Returns the web view on screen; null if there is none.
  std::shared_ptr<MemoryWebView> page() { return memory_->userInterface.frontWebView(); }
  /// Makes the page on screen post the player's choice, and runs everything that follows.
  void choose(const std::string& action, const std::string& message = "") {
    post(action, message);
    settle();
  }
  /// Does the same without running the tasks that it leaves on the main queue.
  void post(const std::string& action, const std::string& message = "") {
    const auto view = page();
    ASSERT_NE(view, nullptr) << "no page is on screen";
    view->postMessage("ZOVKPopup", boost::json::value(resultText(action, message)));
  }
  /// Returns the text of a choice for a host, which is also the text that a page posts.
  static std::string resultText(const std::string& action, const std::string& message = "") {
    return R"({"action":")" + action + R"(","msg":")" + message + R"("})";
  }

  /// Returns a callback that adds its arguments to `answers_`.
  ZOVKPopupComplete recordAnswer() {
    return [this](std::int32_t code, const std::string& message) {
      answers_.emplace_back(code, message);
    };
  }
  const std::vector<Answer>& answers() const { return answers_; }

 private:
  std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
  std::vector<Answer> answers_;
};

}  // namespace zovk
