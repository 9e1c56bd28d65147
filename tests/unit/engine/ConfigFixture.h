#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogLines.h"

namespace zovk {

/// The engine with documents of a test.
class ConfigFixture : public EngineFixture {
 protected:
  static constexpr const char* kRemoteFile = "ZOVKPopupRemote.config";
  static constexpr const char* kLocalFile = "ZOVKPopupLocal.config";

  std::vector<std::string> lines() { return shortLines(log()); }
  MemoryFileSystem& files() { return memory().files; }
  std::optional<std::string> cacheText(const std::string& name) {
    return files().text(std::string(kCache) + "/" + name);
  }

  /// Returns a document with these entries, each the text of an object.
  static std::string documentOf(const std::vector<std::string>& entries) {
    std::string text = R"({"popups":[)";
    for (const std::string& entry : entries) {
      if (text.back() != '[') text += ',';
      text += entry;
    }
    return text + "]}";
  }
  static std::string entryOf(const std::string& scene, int publishTime = 0) {
    return R"({"scene":")" + scene + R"(","publish_time":)" + std::to_string(publishTime) + "}";
  }
  static std::vector<std::string> scenesOf(const PopupList& popups) {
    std::vector<std::string> scenes;
    for (const PopupPointer& popup : popups) scenes.push_back(popup->scene);
    return scenes;
  }
};

}  // namespace zovk
