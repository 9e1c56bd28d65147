#pragma once

#include <atomic>
#include <deque>
#include <list>
#include <memory>
#include <string>
#include <thread>
#include <utility>

#include "platform/linux/http/CurlHandles.h"
#include "platform/linux/http/CurlQueue.h"
#include "platform/linux/http/CurlSessionSettings.h"
#include "platform/linux/http/CurlTask.h"
#include "platform/linux/http/CurlTransfer.h"
#include "support/UniqueFd.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk {

/// Runs the transfers of a session on one thread, which starts with the first of them, and calls
/// the completions there. Any thread may call `start` and `wakeUp`. Transfers take turns: the
/// numbers of requests for data at a time, and of downloads from one host, are limited. So stalled
/// transfers hold up few others, and the game keeps its descriptors.
class CurlWorker : public std::enable_shared_from_this<CurlWorker> {
 public:
  /// Throws std::system_error if the process has no descriptors left.
  explicit CurlWorker(CurlSessionSettings settings);

  void start(std::unique_ptr<CurlJob> job);
  /// Makes the thread look for jobs that were added or cancelled.
  void wakeUp();
  /// Ends the thread, and waits for a completion that is running. Transfers that have not ended are
  /// dropped without calling back. May be repeated; one caller at a time.
  void shutDown();

 private:
  using Jobs = std::deque<std::unique_ptr<CurlJob>>;
  struct Running {
    Running(std::unique_ptr<CurlJob> begun, const CurlSessionSettings& settings)
        : job(std::move(begun)), transfer(job->request, *job->sink, settings) {}
    std::unique_ptr<CurlJob> job;
    CurlTransfer transfer;
  };

  /// The state that only the thread uses.
  struct State {
    CurlMulti multi;
    SessionFiles files;
    CurlQueue waiting;
    std::list<Running> running;
    bool woken = true;  // something was added or cancelled
  };

  void run();
  void runTransfers();
  /// Fails all requests, if there is no library to send them with.
  void failAll(const std::string& reason);
  /// Returns whether somebody woke the thread.
  bool takeSignal();
  Jobs takeAdded();
  void limitConnections(const State& state) const;
  void acceptJobs(State& state);
  void beginWaiting(State& state);
  std::unique_ptr<CurlJob> nextToBegin(State& state) const;
  void begin(State& state, std::unique_ptr<CurlJob> job);
  void finishCancelled(State& state);
  // Returns true if a transfer has ended, so that another may begin before the thread waits.
  bool finishStalled(State& state);
  bool finishEnded(State& state);
  void finish(State& state, std::list<Running>::iterator running, CURLcode code);
  void wait(State& state);
  static int millisecondsToWait(State& state);

  const CurlSessionSettings settings_;
  UniqueFd signal_;
  std::atomic<bool> stopping_{false};
  Mutex mutex_;
  Jobs added_ ZOVK_GUARDED_BY(mutex_);
  std::thread thread_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
