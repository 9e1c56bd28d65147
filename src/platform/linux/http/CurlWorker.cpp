#include "platform/linux/http/CurlWorker.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <map>
#include <string>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>

namespace zovk {
namespace {

using SteadyClock = std::chrono::steady_clock;

// The descriptors that one download may need until it is connected.
constexpr std::size_t kDescriptorsToBegin = 3;
// Connections that are kept for later requests.
constexpr long kIdleConnections = 8;
constexpr std::chrono::minutes kLongestWait{1};
constexpr const char* kCancelled = "cancelled";

// A connection that is closed while TLS writes to it must not end the game.
void blockBrokenPipeSignal() {
  sigset_t signals;
  ::sigemptyset(&signals);
  ::sigaddset(&signals, SIGPIPE);
  ::pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

void fail(CurlJob& job, std::string error) {
  UrlResult result;
  result.url = job.request.url;
  result.error = std::move(error);
  job.sink->complete(result);
}

}  // namespace

CurlWorker::CurlWorker(CurlSessionSettings settings)
    : settings_(std::move(settings)), signal_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!signal_) throw std::system_error(errno, std::generic_category(), "eventfd");
}

void CurlWorker::start(std::unique_ptr<CurlJob> job) {
  {
    const LockGuard lock(mutex_);
    if (stopping_) return;
    added_.push_back(std::move(job));
    // The thread keeps the worker, so that it may end after everybody else has let go.
    if (!thread_.joinable()) thread_ = std::thread([self = shared_from_this()] { self->run(); });
  }
  wakeUp();
}

void CurlWorker::wakeUp() {
  const std::uint64_t one = 1;
  [[maybe_unused]] const auto written = ::write(signal_.get(), &one, sizeof one);
}

void CurlWorker::shutDown() {
  std::thread thread;
  Jobs dropped;
  {
    const LockGuard lock(mutex_);
    stopping_ = true;
    thread.swap(thread_);
    dropped.swap(added_);
  }
  wakeUp();
  if (!thread.joinable()) return;
  if (thread.get_id() == std::this_thread::get_id()) {
    thread.detach();  // a completion let go of the session; the thread ends when that returns
  } else {
    thread.join();
  }
}

void CurlWorker::run() {
  blockBrokenPipeSignal();
  if (!curl().failure.empty()) return failAll(curl().failure);
  runTransfers();
}

void CurlWorker::runTransfers() {
  State state{{}, {{}, DownloadCache(settings_.cachePath)}, {}, {}};
  limitConnections(state);
  while (!stopping_) {
    if (std::exchange(state.woken, false)) acceptJobs(state);
    finishCancelled(state);
    beginWaiting(state);
    int stillRunning = 0;
    curl().multiPerform(state.multi.get(), &stillRunning);
    const bool stalled = finishStalled(state);
    const bool ended = finishEnded(state);
    if (!stalled && !ended) wait(state);
  }
  for (const Running& running : state.running) {
    curl().multiRemoveHandle(state.multi.get(), running.transfer.handle());
  }
}

void CurlWorker::failAll(const std::string& reason) {
  while (!stopping_) {
    for (const auto& job : takeAdded()) {
      if (stopping_) return;
      fail(*job, job->task->isCancelled() ? kCancelled : reason);
    }
    pollfd signal{signal_.get(), POLLIN, 0};
    ::poll(&signal, 1, -1);
    takeSignal();
  }
}

CurlWorker::Jobs CurlWorker::takeAdded() {
  const LockGuard lock(mutex_);
  return std::exchange(added_, {});
}

// Limits connections. The turns below keep to these limits, which also make sure that an idle
// connection is closed before another is opened.
void CurlWorker::limitConnections(const State& state) const {
  const auto most =
      static_cast<long>(settings_.mostDataRequests + settings_.mostDownloadDescriptors);
  curl().multiSetOption(state.multi.get(), CURLMOPT_MAX_TOTAL_CONNECTIONS, most);
  curl().multiSetOption(state.multi.get(), CURLMOPT_MAXCONNECTS, kIdleConnections);
}

void CurlWorker::acceptJobs(State& state) {
  for (auto& job : takeAdded()) state.waiting.add(std::move(job));
  for (const auto& job : state.waiting.takeCancelled()) {
    if (stopping_) return;
    fail(*job, kCancelled);
  }
}

void CurlWorker::beginWaiting(State& state) {
  while (!stopping_) {
    auto job = nextToBegin(state);
    if (job == nullptr) return;
    begin(state, std::move(job));
  }
}

std::unique_ptr<CurlJob> CurlWorker::nextToBegin(State& state) const {
  std::size_t dataRequests = 0;
  std::size_t descriptors = kDescriptorsToBegin;
  std::map<std::string, std::size_t> downloads;
  for (const Running& running : state.running) {
    if (running.job->kind == CurlJob::Kind::kData) {
      ++dataRequests;
    } else {
      ++downloads[running.job->host];
      descriptors += running.transfer.descriptors();
    }
  }
  if (dataRequests < settings_.mostDataRequests) {
    if (auto job = state.waiting.nextData()) return job;
  }
  if (descriptors > settings_.mostDownloadDescriptors) return nullptr;
  return state.waiting.nextDownload([&](const std::string& host) {
    const auto running = downloads.find(host);
    return running == downloads.end() || running->second < settings_.mostDownloadsOfAHost;
  });
}

void CurlWorker::begin(State& state, std::unique_ptr<CurlJob> job) {
  if (job->task->isCancelled()) {
    fail(*job, kCancelled);
    return;
  }
  Running& running = state.running.emplace_back(std::move(job), settings_);
  if (auto error = running.transfer.prepare(state.files)) {
    job = std::move(running.job);
    state.running.pop_back();
    fail(*job, std::move(*error));
    return;
  }
  curl().multiAddHandle(state.multi.get(), running.transfer.handle());
}

void CurlWorker::finishCancelled(State& state) {
  for (auto running = state.running.begin(); running != state.running.end() && !stopping_;) {
    const auto next = std::next(running);
    if (running->job->task->isCancelled()) finish(state, running, CURLE_ABORTED_BY_CALLBACK);
    running = next;
  }
}

bool CurlWorker::finishStalled(State& state) {
  const auto now = SteadyClock::now();
  bool any = false;
  for (auto running = state.running.begin(); running != state.running.end() && !stopping_;) {
    const auto next = std::next(running);
    if (running->transfer.deadline(now) <= now) {
      finish(state, running, CURLE_OPERATION_TIMEDOUT);
      any = true;
    }
    running = next;
  }
  return any;
}

bool CurlWorker::finishEnded(State& state) {
  bool any = false;
  int left = 0;
  while (const CURLMsg* message = curl().multiInfoRead(state.multi.get(), &left)) {
    if (stopping_) break;
    const CURLcode code = message->data.result;  // the message goes with the handle
    const auto running = std::find_if(
        state.running.begin(), state.running.end(),
        [&](const Running& one) { return one.transfer.handle() == message->easy_handle; });
    if (running == state.running.end()) continue;
    finish(state, running, code);
    any = true;
  }
  return any;
}

void CurlWorker::finish(State& state, std::list<Running>::iterator running, CURLcode code) {
  curl().multiRemoveHandle(state.multi.get(), running->transfer.handle());
  UrlResult result = running->transfer.result(code);
  if (running->job->task->isCancelled()) result.error = kCancelled;
  const AnswerVersion version = running->transfer.version();
  auto job = std::move(running->job);
  state.running.erase(running);
  if (job->sink->settle(result, version)) {
    job->sink->complete(result);
  } else {
    begin(state, std::move(job));
  }
}

void CurlWorker::wait(State& state) {
  curl_waitfd signal{signal_.get(), CURL_WAIT_POLLIN, 0};
  curl().multiPoll(state.multi.get(), &signal, 1, millisecondsToWait(state), nullptr);
  if (takeSignal()) state.woken = true;
}

bool CurlWorker::takeSignal() {
  std::uint64_t count = 0;
  return ::read(signal_.get(), &count, sizeof count) > 0;
}

// Returns the time until the first transfer counts as stalled. The library itself wakes for
// everything else that is due.
int CurlWorker::millisecondsToWait(State& state) {
  const auto now = SteadyClock::now();
  SteadyClock::duration wait = kLongestWait;
  for (Running& running : state.running) {
    wait = std::min(wait, running.transfer.deadline(now) - now);
  }
  const auto milliseconds = std::chrono::ceil<std::chrono::milliseconds>(wait).count();
  return static_cast<int>(std::max<decltype(milliseconds)>(milliseconds, 0));
}

}  // namespace zovk
