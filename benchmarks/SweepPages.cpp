#include <filesystem>
#include <fstream>
#include <string>

#include <benchmark/benchmark.h>

#include "RealFiles.h"
#include "storage/ZOVKPopupFileManager.h"

namespace zovk {
namespace {

constexpr int kStalePages = 10'000;

void writeStalePages(const std::filesystem::path& directory) {
  for (int i = 0; i < kStalePages; ++i) {
    std::ofstream(directory / ("ZOVKPopup_1_1_1_" + std::to_string(i) + ".html")) << "<p>old</p>";
  }
}

// Measures what a start does with the pages of a document that has been replaced.
void SweepStalePages(benchmark::State& state) {
  RealFiles files;
  auto& store = *ZOVKPopupFileManager::sharedInstance();
  for (auto _ : state) {
    state.PauseTiming();
    writeStalePages(files.cache());
    state.ResumeTiming();
    store.deleteInternalFileWithout("ZOVKPopupRemote.config");
  }
  if (!std::filesystem::is_empty(files.cache())) state.SkipWithError("pages are left");
}
BENCHMARK(SweepStalePages)->Iterations(3)->Unit(benchmark::kMicrosecond);

void RemoveBareFiles(benchmark::State& state) {
  RealFiles files;
  for (auto _ : state) {
    state.PauseTiming();
    writeStalePages(files.cache());
    state.ResumeTiming();
    for (const auto& entry : std::filesystem::directory_iterator(files.cache())) {
      std::filesystem::remove(entry.path());
    }
  }
}
BENCHMARK(RemoveBareFiles)->Iterations(3)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zovk
