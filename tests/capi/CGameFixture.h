#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>

#include "fixtures/LocalBundle.h"
#include "zovkpopup.h"

namespace zovk {

/// User data that records the calls it came with.
struct Note {
  std::vector<std::pair<std::int32_t, std::string>> answers;
  std::vector<std::string> texts;
  std::atomic<int> calls{0};
  std::atomic<int> destroyed{0};

  static void destroy(void* user) { ++static_cast<Note*>(user)->destroyed; }
  static void complete(std::int32_t code, const char* message, void* user) {
    static_cast<Note*>(user)->answers.emplace_back(code, message);
  }
  static void event(void* user) { ++static_cast<Note*>(user)->calls; }
  static void text(const char* text, void* user) {
    static_cast<Note*>(user)->texts.emplace_back(text == nullptr ? "nothing" : text);
  }
};

/// A game that uses only the C interface, with its own home directory and bundle. Debug lines are
/// on.
class CGameFixture : public ::testing::Test {
 protected:
  // Ends the host while the test still exists, so that its user data is released now.
  void TearDown() override { zovkpopup_shut_down(); }

  /// Returns the game's settings; their texts live as long as the test.
  zovkpopup_settings settings() {
    zovkpopup_settings settings{};
    settings.size = sizeof settings;
    settings.application_id = "zovkpopup-test";
    settings.resource_directory = resources_.c_str();
    settings.data_directory = home_.c_str();
    settings.log = [](const char* line, void* user) {
      auto* const game = static_cast<CGameFixture*>(user);
      const std::lock_guard lock(game->mutex_);
      game->lines_.emplace_back(line);
    };
    settings.log_user = this;
    return settings;
  }
  zovkpopup_status setUp() {
    bundle_.write();
    std::ofstream(resources_ + "/Info.json") << R"({"ZOVK_DEBUG": true})";
    const auto mine = settings();
    return zovkpopup_set_up(&mine);
  }
  void addPage(const std::string& scene, std::uint64_t sceneType, const std::string& html) {
    ZOVKPopupModel popup;
    popup.scene = scene;
    popup.scene_type = sceneType;
    popup.pop_freq = 2;
    bundle_.addPage(popup, html);
  }
  LocalBundle& bundle() { return bundle_; }

  /// Pumps whenever the descriptor asks for it, until `done`. Fails the test, naming `what`, after
  /// a minute.
  void pumpUntil(const std::function<bool()>& done, const std::string& what) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
    while (!done()) {
      ASSERT_LT(std::chrono::steady_clock::now(), end) << "waited in vain for " << what << "\n"
                                                       << allLines();
      pollfd ready{zovkpopup_poll_descriptor(), POLLIN, 0};
      poll(&ready, 1, 100);
      ASSERT_EQ(zovkpopup_pump(2000), ZOVKPOPUP_OK);
    }
  }

  std::size_t countOf(const std::string& text) {
    const std::lock_guard lock(mutex_);
    std::size_t count = 0;
    for (const std::string& line : lines_) count += line.find(text) != std::string::npos ? 1U : 0U;
    return count;
  }
  bool logged(const std::string& text) { return countOf(text) > 0; }
  std::string allLines() {
    const std::lock_guard lock(mutex_);
    std::string all;
    for (const std::string& line : lines_) all += line + "\n";
    return all;
  }

 private:
  LocalBundle bundle_;
  ScratchDirectory homeDirectory_;
  const std::string resources_ = bundle_.resourceDirectory();
  const std::string home_ = homeDirectory_.path().string();
  std::mutex mutex_;
  std::vector<std::string> lines_;
};

}  // namespace zovk
