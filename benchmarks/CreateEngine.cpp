#include <benchmark/benchmark.h>
#include <boost/json/parse.hpp>

#include "Definitions.h"
#include "engine/ZOVKPopupManager.h"

namespace zovk {
namespace {

constexpr int kDefinitions = 1000;

void CreateEngine(benchmark::State& state) {
  BenchmarkPlatform platform;
  platform.memory().files.addFile("/home/player/Library/Caches/ZOVKPopup/ZOVKPopupRemote.config",
                                  documentOf(kDefinitions, "remote"));
  platform.memory().files.addFile("/app/ZOVKPopupResource.bundle/ZOVKPopupLocal.config",
                                  documentOf(kDefinitions, "local"));
  for (auto _ : state) {
    benchmark::DoNotOptimize(ZOVKPopupManager::sharedInstance());
    state.PauseTiming();
    ZOVKPopupManager::purgeSharedInstance();
    state.ResumeTiming();
  }
}
BENCHMARK(CreateEngine)->Unit(benchmark::kMicrosecond);

void ParseBothDocuments(benchmark::State& state) {
  const std::string remote = documentOf(kDefinitions, "remote");
  const std::string local = documentOf(kDefinitions, "local");
  for (auto _ : state) {
    const auto first = boost::json::parse(remote);
    const auto second = boost::json::parse(local);
    benchmark::DoNotOptimize(first.is_object() && second.is_object());
  }
}
BENCHMARK(ParseBothDocuments)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zovk
