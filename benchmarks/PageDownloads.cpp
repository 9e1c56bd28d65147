// 200 pages of 64 KiB from the development service: against the curl command-line tool that fetches
// the same list in parallel, and how much a second start transfers.
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>

#include "LocalService.h"
#include "Report.h"
#include "Statistics.h"
#include "platform/linux/http/CurlUrlSession.h"
#include "platform/linux/system/PosixFileSystem.h"

namespace zovk {
namespace {

constexpr int kPages = 200;
constexpr int kRounds = 11;

namespace fs = std::filesystem;

// Returns all bytes that went over the loopback device, headers of every layer included.
double loopbackBytes() {
  std::ifstream file("/sys/class/net/lo/statistics/rx_bytes");
  double bytes = 0;
  file >> bytes;
  return bytes;
}

/// Counts the pages that arrived whole.
class Arrivals {
 public:
  void add(const DownloadResult& result) {
    const auto page = result.path ? PosixFileSystem().read(*result.path) : std::nullopt;
    const std::lock_guard lock(mutex_);
    ++ended_;
    if (page && page->size() == LocalService::kPageBytes) ++whole_;
    all_.notify_one();
  }
  void wait() {
    std::unique_lock lock(mutex_);
    all_.wait(lock, [this] { return ended_ == kPages; });
    if (whole_ == kPages) return;
    std::fprintf(stderr, "%d of %d pages arrived\n", whole_, kPages);
    std::exit(1);
  }

 private:
  std::mutex mutex_;
  std::condition_variable all_;
  int ended_ = 0;
  int whole_ = 0;
};

// Plays one start of a game, with a session of its own and every page read whole. Returns
// milliseconds.
double start(const LocalService& service, const std::string& cache) {
  const auto begin = std::chrono::steady_clock::now();
  CurlUrlSession session({cache, {}});
  Arrivals arrivals;
  for (int i = 0; i < kPages; ++i) {
    session
        .downloadTask(service.pageUrl(i),
                      [&](const DownloadResult& result) { arrivals.add(result); })
        ->resume();
  }
  arrivals.wait();
  return Milliseconds(std::chrono::steady_clock::now() - begin).count();
}

// Files are made anew in each round, as those of a start are. To make one takes the disk longer
// than to write over it.
std::string writeList(const LocalService& service, const fs::path& directory) {
  fs::create_directory(directory);
  const fs::path list = directory / "list";
  std::ofstream file(list);
  for (int i = 0; i < kPages; ++i) {
    file << "url = \"" << service.pageUrl(i) << "\"\noutput = \""
         << (directory / std::to_string(i)).string() << "\"\n";
  }
  return list.string();
}

double fetchWithTool(const std::string& list) {
  const auto begin = std::chrono::steady_clock::now();
  const int code =
      std::system(("curl --silent --no-progress-meter --fail --parallel --config " + list).c_str());
  const double time = Milliseconds(std::chrono::steady_clock::now() - begin).count();
  if (code == 0) return time;
  std::fprintf(stderr, "curl failed\n");
  std::exit(1);
}

}  // namespace
}  // namespace zovk

int main() {
  using namespace zovk;
  const LocalService service(kPages);
  ScratchDirectory directory;
  std::vector<double> ours;
  std::vector<double> again;
  std::vector<double> tool;
  double firstBytes = 0;
  double secondBytes = 0;
  for (int round = 0; round < kRounds; ++round) {
    const std::string cache = (directory.path() / ("cache" + std::to_string(round))).string();
    const double before = loopbackBytes();
    ours.push_back(start(service, cache));
    const double between = loopbackBytes();
    again.push_back(start(service, cache));
    firstBytes = between - before;
    secondBytes = loopbackBytes() - between;
    tool.push_back(
        fetchWithTool(writeList(service, directory.path() / ("tool" + std::to_string(round)))));
  }
  Report report;
  report.add({"200 pages of 64 KiB / the curl tool, as speed", medianOf(tool) / medianOf(ours), "x",
              Claim::Holds::kFrom, 0.7});
  report.add({.text = "bytes of the second start / of the first",
              .figure = secondBytes / firstBytes,
              .unit = "x",
              .bound = 0.01});
  report.tell("200 pages, median", medianOf(ours), "ms");
  report.tell("the curl tool, median", medianOf(tool), "ms");
  report.tell("200 pages at a second start, median", medianOf(again), "ms");
  report.keep("200 pages of 64 KiB", ours);
  return report.finish();
}
