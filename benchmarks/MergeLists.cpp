#include <benchmark/benchmark.h>

#include "Definitions.h"
#include "engine/ZOVKPopupManager.h"

namespace zovk {
namespace {

void MergeLists(benchmark::State& state) {
  BenchmarkPlatform platform;
  auto& engine = *ZOVKPopupManager::sharedInstance();
  const int count = static_cast<int>(state.range(0));
  engine.setRemotePopupArr(popupsWithScenes(count, 0));
  engine.setLocalPopupArr(popupsWithScenes(count, 1));
  for (auto _ : state) engine.mergeConfig();
}
BENCHMARK(MergeLists)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zovk
