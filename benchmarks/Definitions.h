#pragma once

#include <memory>
#include <string>

#include "platform/memory/MemoryPlatform.h"
#include "record/ZOVKPopupModel.h"

namespace zovk {

/// Returns a configuration document with `count` web-page popups. Each has a different scene, which
/// begins with `scenePrefix`.
std::string documentOf(int count, const std::string& scenePrefix);

/// Returns `count` popups with scenes numbered from `first`.
PopupList popupsWithScenes(int count, int first);

/// Makes the memory platform the current one, with debug lines off, for as long as it lives.
class BenchmarkPlatform {
 public:
  BenchmarkPlatform();
  ~BenchmarkPlatform();
  BenchmarkPlatform(const BenchmarkPlatform&) = delete;
  BenchmarkPlatform& operator=(const BenchmarkPlatform&) = delete;
  MemoryPlatform& memory() { return *memory_; }

 private:
  std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
};

}  // namespace zovk
