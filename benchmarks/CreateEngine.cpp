#include <benchmark/benchmark.h>
#include <boost/json/parse.hpp>

#include "Definitions.h"
#include "engine/DocumentReader.h"
#include "engine/ZOVKPopupManager.h"

namespace zovk {
namespace {

constexpr int kDefinitions = 1000;

constexpr const char* kRemoteFile = "/home/player/Library/Caches/ZOVKPopup/ZOVKPopupRemote.config";

void createAgainAndAgain(benchmark::State& state) {
  for (auto _ : state) {
    benchmark::DoNotOptimize(ZOVKPopupManager::sharedInstance());
    state.PauseTiming();
    ZOVKPopupManager::purgeSharedInstance();
    state.ResumeTiming();
  }
}

void CreateEngine(benchmark::State& state) {
  BenchmarkPlatform platform;
  platform.memory().files.addFile(kRemoteFile, documentOf(kDefinitions, "remote"));
  platform.memory().files.addFile("/app/ZOVKPopupResource.bundle/ZOVKPopupLocal.config",
                                  documentOf(kDefinitions, "local"));
  createAgainAndAgain(state);
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

// Returns the longest document that is accepted: ten thousand definitions in eight megabytes.
std::string largestDocument() {
  std::string document = documentOf(static_cast<int>(kMostDocumentEntries), "scene");
  document.resize(kMostDocumentBytes, ' ');
  return document;
}

// Returns the costliest document that is known: one definition, and a million members that nobody
// reads.
std::string documentOfRubbish() {
  std::string document = documentOf(1, "scene");
  document.back() = ',';
  document += R"("x":[{})";
  while (document.size() + 12 < kMostDocumentBytes) document += R"(,{"a":1})";
  return document + "]}";
}

void CreateEngineOfTheLargestDocument(benchmark::State& state) {
  BenchmarkPlatform platform;
  platform.memory().files.addFile(kRemoteFile, largestDocument());
  createAgainAndAgain(state);
}
BENCHMARK(CreateEngineOfTheLargestDocument)->Unit(benchmark::kMicrosecond);

void CreateEngineOfRubbish(benchmark::State& state) {
  BenchmarkPlatform platform;
  platform.memory().files.addFile(kRemoteFile, documentOfRubbish());
  createAgainAndAgain(state);
}
BENCHMARK(CreateEngineOfRubbish)->Unit(benchmark::kMicrosecond);

void ParseTheRubbish(benchmark::State& state) {
  const std::string document = documentOfRubbish();
  for (auto _ : state) {
    const auto parsed = boost::json::parse(document);
    benchmark::DoNotOptimize(parsed.is_object());
  }
}
BENCHMARK(ParseTheRubbish)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zovk
