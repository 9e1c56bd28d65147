#include "platform/linux/CurlWorker.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>

namespace zovk {
namespace {

using SteadyClock = std::chrono::steady_clock;

// More at once do not make the downloads faster and use up the game's descriptors.
constexpr std::ptrdiff_t kMostDownloads = 6;
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
  curl().failure.empty() ? runTransfers() : failAll(curl().failure);
}

void CurlWorker::runTransfers() {
  State state{{}, {{}, DownloadCache(settings_.cachePath)}, {}, {}};
  while (!stopping_) {
    acceptJobs(state);
    finishCancelled(state);
    beginWaiting(state);
    int stillRunning = 0;
    curl().multiPerform(state.multi.get(), &stillRunning);
    finishStalled(state);
    if (!finishEnded(state)) wait(state);
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

void CurlWorker::acceptJobs(State& state) {
  Jobs jobs = takeAdded();
  std::move(jobs.begin(), jobs.end(), std::back_inserter(state.waiting));
}

void CurlWorker::beginWaiting(State& state) {
  Jobs jobs;
  jobs.swap(state.waiting);
  for (auto& job : jobs) {
    if (stopping_) return;
    if (mayBegin(state, *job)) {
      begin(state, std::move(job));
    } else {
      state.waiting.push_back(std::move(job));
    }
  }
}

bool CurlWorker::mayBegin(const State& state, const CurlJob& job) {
  if (job.kind == CurlJob::Kind::kData || job.task->isCancelled()) return true;
  return std::count_if(state.running.begin(), state.running.end(), [](const Running& running) {
           return running.job->kind == CurlJob::Kind::kDownload;
         }) < kMostDownloads;
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

void CurlWorker::finishStalled(State& state) {
  const auto now = SteadyClock::now();
  for (auto running = state.running.begin(); running != state.running.end() && !stopping_;) {
    const auto next = std::next(running);
    if (running->transfer.deadline(now) <= now) finish(state, running, CURLE_OPERATION_TIMEDOUT);
    running = next;
  }
}

// True when a transfer had ended, so that there is more to do before waiting.
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
  takeSignal();
}

void CurlWorker::takeSignal() {
  std::uint64_t count = 0;
  [[maybe_unused]] const auto readCount = ::read(signal_.get(), &count, sizeof count);
}

// Until the first transfer counts as stalled; the library itself wakes for what else is due.
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
