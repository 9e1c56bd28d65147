#include <array>

#include <benchmark/benchmark.h>

#include "Definitions.h"
#include "engine/ZOVKPopupManager.h"

namespace zovk {
namespace {

constexpr int kTotal = 10'000;

// Merges lists of the given length, ten thousand popups in all taking turns: a merge happens once
// in a game's start, so short lists must not profit from being merged again while they are hot.
void MergeLists(benchmark::State& state) {
  BenchmarkPlatform platform;
  auto& engine = *ZOVKPopupManager::sharedInstance();
  const int count = static_cast<int>(state.range(0));
  std::vector<std::array<PopupList, 2>> turns;
  for (int i = 0; i < kTotal / count; ++i) {
    turns.push_back(
        {popupsWithScenes(count, i * kTotal), popupsWithScenes(count, i * kTotal + count / 2)});
  }
  std::size_t turn = 0;
  for (auto _ : state) {
    state.PauseTiming();
    engine.setRemotePopupArr(turns[turn][0]);
    engine.setLocalPopupArr(turns[turn][1]);
    turn = (turn + 1) % turns.size();
    state.ResumeTiming();
    engine.mergeConfig();
  }
}
BENCHMARK(MergeLists)->Arg(1000)->Arg(kTotal)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zovk
