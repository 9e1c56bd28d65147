#include <benchmark/benchmark.h>

#include "Definitions.h"
#include "logging/ZPLogger.h"

namespace zovk {
namespace {

void DebugLogCallSwitchedOff(benchmark::State& state) {
  BenchmarkPlatform platform;
  constexpr DebugLog debug{"ZOVKPopupManager", "ZOVKPopupManager::havePopup"};
  const std::string text = "a text that would have to be copied if the line were formatted";
  int number = 0;
  for (auto _ : state) {
    debug("sceneType:%d, text:%@", ++number, text);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(DebugLogCallSwitchedOff);

void EmptyLoop(benchmark::State& state) {
  int number = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(++number);
    benchmark::ClobberMemory();
  }
}
BENCHMARK(EmptyLoop);

}  // namespace
}  // namespace zovk
