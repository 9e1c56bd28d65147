#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "fixtures/EngineFixture.h"
#include "fixtures/LogLines.h"

namespace zovk {

/// The file manager, made and with an empty log.
class StorageFixture : public EngineFixture {
 protected:
  StorageFixture() {
    fileManager();
    log().clear();
  }

  std::vector<std::string> lines() { return shortLines(log()); }
  MemoryFileSystem& files() { return memory().files; }
  static std::string cachePath(const std::string& name) { return std::string(kCache) + "/" + name; }
  std::optional<std::string> cacheText(const std::string& name) {
    return files().text(cachePath(name));
  }
};

}  // namespace zovk
