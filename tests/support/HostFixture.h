#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>

#include "support/LocalBundle.h"
#include "zovkpopup/Host.h"
#include "zovkpopup/ZOVKPopup.h"
#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// A game without a screen of its own. It sets the popups up on the real platform, with a private
/// home directory and resource bundle, and pumps until the event that it waits for.
class HostFixture : public ::testing::Test {
 protected:
  using Answer = std::pair<std::int32_t, std::string>;

  ~HostFixture() override { ZOVKPopupHost::shutDown(); }

  ZOVKPopupHostSettings settings() {
    ZOVKPopupHostSettings settings;
    settings.applicationId = "zovkpopup-test";
    settings.resourceDirectory = bundle_.resourceDirectory();
    settings.dataDirectory = home_.path().string();
    settings.logSink = [this](std::string_view line) {
      const std::lock_guard lock(mutex_);
      lines_.emplace_back(line);
    };
    return settings;
  }

  LocalBundle& bundle() { return bundle_; }
  const std::filesystem::path& home() const { return home_.path(); }

  /// Pumps whenever the poll descriptor asks for it, until `done`. Fails the test, naming `what`,
  /// after `bound`.
  void pumpUntil(const std::function<bool()>& done, const std::string& what,
                 std::chrono::seconds bound = std::chrono::seconds(30)) {
    const auto end = std::chrono::steady_clock::now() + bound;
    while (!done()) {
      ASSERT_LT(std::chrono::steady_clock::now(), end) << "waited in vain for " << what << "\n"
                                                       << allLines();
      pollfd ready{ZOVKPopupHost::pollDescriptor(), POLLIN, 0};
      poll(&ready, 1, 100);
      ZOVKPopupHost::pump();
    }
  }
  void pumpUntilAnswers(std::size_t count) {
    pumpUntil([&] { return answers_.size() >= count; }, std::to_string(count) + " answers");
  }

  ZOVKPopupComplete recordAnswer() {
    return [this](std::int32_t code, const std::string& message) {
      answers_.emplace_back(code, message);
    };
  }
  const std::vector<Answer>& answers() const { return answers_; }

  bool logged(std::string_view text) {
    const std::lock_guard lock(mutex_);
    for (const std::string& line : lines_) {
      if (line.find(text) != std::string::npos) return true;
    }
    return false;
  }
  std::vector<std::string> lines() {
    const std::lock_guard lock(mutex_);
    return lines_;
  }
  std::string allLines() {
    std::string all;
    for (const std::string& line : lines()) all += line + "\n";
    return all;
  }

  static ZOVKPopupModel popup(const std::string& scene, std::uint64_t sceneType,
                              std::uint64_t frequency = 2, std::int32_t priority = 0) {
    ZOVKPopupModel model;
    model.scene = scene;
    model.scene_type = sceneType;
    model.pop_freq = frequency;
    model.priority = priority;
    return model;
  }

 private:
  LocalBundle bundle_;
  ScratchDirectory home_;
  std::mutex mutex_;
  std::vector<std::string> lines_;
  std::vector<Answer> answers_;
};

}  // namespace zovk
