// Many games start one after another: signed configuration requests to the development service,
// evenly spaced, each over a session and a connection of its own. Looks for failures, and for
// growth of the service.
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <list>
#include <memory>
#include <thread>

#include <boost/json/parse.hpp>
#include <fmt/format.h>
#include <unistd.h>

#include "LocalService.h"
#include "Report.h"
#include "Statistics.h"
#include "fixtures/ProcessFacts.h"
#include "network/ZOVKPopupNetwork.h"
#include "platform/linux/http/CurlUrlSession.h"

namespace zovk {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kPages = 10;
constexpr int kStartsASecond = 100;
constexpr int kWarmSeconds = 10;
constexpr double kToleranceMegabytes = 4;

bool isConfiguration(const std::string& text) {
  boost::json::error_code error;
  const boost::json::value document = boost::json::parse(text, error);
  const auto* object = error ? nullptr : document.if_object();
  const auto* popups = object == nullptr ? nullptr : object->if_contains("popups");
  return popups != nullptr && popups->is_array() && popups->get_array().size() == kPages;
}

/// One game that starts.
class Start {
 public:
  Start(const LocalService& service, int number) {
    ZOVKPopupUrlParams params;
    params.urlStr = service.base();
    params.actionPath = "/popup/get_info";
    params.gameID = LocalService::kGame;
    params.gameKey = LocalService::kKey;
    params.version = "1.0.0";
    params.installID = fmt::format("{:08X}-0000-4000-8000-000000000000", number);
    std::make_shared<ZOVKPopupNetwork>(session_)->startRequest(
        ZOVKPopupNetwork::kGet, params,
        [this](bool success, const std::optional<std::string>& data) {
          milliseconds_ = Milliseconds(Clock::now() - begin_).count();
          right_ = success && data && isConfiguration(*data);
          ended_ = true;
        });
  }

  bool ended() const { return ended_; }
  bool right() const { return right_; }
  double milliseconds() const { return milliseconds_; }

 private:
  const Clock::time_point begin_ = Clock::now();
  double milliseconds_ = 0;
  bool right_ = false;
  std::atomic<bool> ended_{false};
  CurlUrlSession session_;  // goes first, and its thread with it
};

class Load {
 public:
  explicit Load(const LocalService& service) : service_(service) {}

  /// Starts of that many seconds, one every hundredth of a second; waits for their answers.
  void run(int seconds) {
    auto due = Clock::now();
    for (int i = 0; i < seconds * kStartsASecond; ++i) {
      std::this_thread::sleep_until(due);
      due += std::chrono::milliseconds(1000 / kStartsASecond);
      starts_.push_back(std::make_unique<Start>(service_, started_++));
      takeEnded();
    }
    while (!starts_.empty()) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      takeEnded();
    }
  }
  int started() const { return started_; }
  int failed() const { return failed_; }
  const std::vector<double>& milliseconds() const { return milliseconds_; }

 private:
  void takeEnded() {
    starts_.remove_if([this](const auto& start) {
      if (!start->ended()) return false;
      milliseconds_.push_back(start->milliseconds());
      if (!start->right()) ++failed_;
      return true;
    });
  }

  const LocalService& service_;
  std::list<std::unique_ptr<Start>> starts_;
  std::vector<double> milliseconds_;
  int started_ = 0;
  int failed_ = 0;
};

}  // namespace
}  // namespace zovk

int main(int argc, char** argv) {
  using namespace zovk;
  const int seconds = argc > 1 ? std::atoi(argv[1]) : 60;
  const LocalService service(kPages);
  const pid_t process = childrenOf(getpid()).at(0);
  Load load(service);
  load.run(kWarmSeconds);
  const double memory = privateMegabytes(process);
  const std::size_t descriptors = openDescriptors(process);
  load.run(seconds);
  const double growth = privateMegabytes(process) - memory;
  const std::size_t descriptorsAfter = openDescriptors(process);
  Report report;
  report.add({.text = "starts that failed", .figure = static_cast<double>(load.failed())});
  report.add({.text = "growth of the service",
              .figure = growth,
              .unit = "MB",
              .bound = kToleranceMegabytes});
  report.add({.text = "descriptors that the service kept",
              .figure = static_cast<double>(descriptorsAfter) - static_cast<double>(descriptors),
              .bound = kStartsASecond / 10.0});
  report.tell("starts", load.started(), "");
  report.tell("answer, median", medianOf(load.milliseconds()), "ms");
  report.tell("answer, slowest", largestOf(load.milliseconds()), "ms");
  report.keep("answer to a start", load.milliseconds());
  return report.finish();
}
