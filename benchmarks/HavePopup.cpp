#include <filesystem>
#include <fstream>
#include <string>
#include <thread>

#include <benchmark/benchmark.h>

#include "RealFiles.h"
#include "engine/ZOVKPopupManager.h"
#include "storage/ZOVKPopupFileManager.h"
#include "text/Md5.h"

namespace zovk {
namespace {

constexpr int kDefinitions = 1000;
constexpr int kPageFiles = 100;
constexpr std::size_t kPageBytes = 64 * 1024;

PopupList writePages(const std::filesystem::path& directory) {
  PopupList popups;
  for (int i = 0; i < kDefinitions; ++i) {
    auto popup = std::make_shared<ZOVKPopupModel>();
    popup->scene = "scene " + std::to_string(i);
    popup->scene_type = 1;
    popup->content_type = i < kPageFiles ? 1 : 3;
    popup->uri = "https://popups.example/" + std::to_string(i);
    popup->sig = md5Hex(popup->uri);
    if (i < kPageFiles) {
      std::string page = "<!-- page " + std::to_string(i) + " -->";
      page.resize(kPageBytes, ' ');
      popup->sig = md5Hex(page);
      std::ofstream(directory / popup->getPopupFileName()) << page;
    }
    popups.push_back(std::move(popup));
  }
  return popups;
}

void HavePopupFirstTime(benchmark::State& state) {
  RealFiles files;
  const PopupList popups = writePages(files.cache());
  for (auto _ : state) {
    state.PauseTiming();
    ZOVKPopupManager::purgeSharedInstance();
    ZOVKPopupFileManager::purgeSharedInstance();
    ZOVKPopupManager::allocWithZone()->setMergePopupArr(popups);
    ZOVKPopupFileManager::sharedInstance();
    state.ResumeTiming();
    if (!ZOVKPopupManager::sharedInstance()->havePopup(1)) state.SkipWithError("no popup");
  }
}
BENCHMARK(HavePopupFirstTime)->Unit(benchmark::kMicrosecond);

void HavePopupAgain(benchmark::State& state) {
  RealFiles files;
  ZOVKPopupManager::allocWithZone()->setMergePopupArr(writePages(files.cache()));
  auto& engine = *ZOVKPopupManager::sharedInstance();
  std::this_thread::sleep_for(std::chrono::milliseconds(100));  // files count as settled
  engine.havePopup(1);
  for (auto _ : state) benchmark::DoNotOptimize(engine.havePopup(1));
}
BENCHMARK(HavePopupAgain)->Unit(benchmark::kMicrosecond);

void HashThePages(benchmark::State& state) {
  RealFiles files;
  const PopupList popups = writePages(files.cache());
  PosixFileSystem disk;
  for (auto _ : state) {
    for (int i = 0; i < kPageFiles; ++i) {
      Md5 md5;
      const auto& popup = popups[static_cast<std::size_t>(i)];
      disk.readPieces((files.cache() / popup->getPopupFileName()).string(),
                      [&](std::string_view piece) { md5.update(piece); });
      benchmark::DoNotOptimize(md5.finish());
    }
  }
}
BENCHMARK(HashThePages)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace zovk
