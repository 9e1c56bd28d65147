#include "ReportStream.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <stdexcept>
#include <utility>

#include <hiredis/adapters/libevent.h>
#include <hiredis/hiredis.h>

namespace zovk::intake {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestWait = 5s;
constexpr auto kShortestPause = 50ms;
constexpr auto kLongestPause = 2000ms;
// While the stream writes one to its disk, the next is there already.
constexpr std::size_t kMostBatches = 2;
constexpr std::size_t kMostInBatch = 256;
constexpr std::size_t kLargestBatch = 1'048'576;  // Bytes, of more than one report.

constexpr std::string_view kSaysNothing = "the stream gave an answer that says nothing";

timeval toTimeval(std::chrono::microseconds time) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(time);
  return {.tv_sec = seconds.count(), .tv_usec = (time - seconds).count()};
}

redisAsyncContext* open(const std::string& address) {
  if (address.starts_with('/')) return redisAsyncConnectUnix(address.c_str());
  const auto colon = address.rfind(':');
  int port = 0;
  if (colon != std::string::npos) {
    std::from_chars(address.data() + colon + 1, address.data() + address.size(), port);
  }
  if (port <= 0) throw std::invalid_argument(address + " is neither a path nor HOST:PORT");
  return redisAsyncConnect(address.substr(0, colon).c_str(), port);
}

/// Only the number of the new entry is a promise.
std::string_view refusalOf(const redisReply* reply) {
  if (reply == nullptr) return "the stream went away";
  if (reply->type == REDIS_REPLY_STRING && reply->len > 0) return "";
  if (reply->type == REDIS_REPLY_ERROR && reply->len > 0) return {reply->str, reply->len};
  return kSaysNothing;
}

/// Returns what is said of one of the reports that were sent together.
std::string_view refusalOf(const redisReply* reply, std::size_t index, std::size_t count) {
  if (reply == nullptr || reply->type != REDIS_REPLY_ARRAY) {
    const std::string_view refusal = refusalOf(reply);
    return refusal.empty() ? kSaysNothing : refusal;
  }
  return reply->elements == count ? refusalOf(reply->element[index]) : kSaysNothing;
}

}  // namespace

template <void (ReportStream::*Method)()>
ReportStream::Timer ReportStream::makeTimer() {
  const auto call = [](evutil_socket_t, short, void* self) {
    (static_cast<ReportStream*>(self)->*Method)();
  };
  return {event_new(base_, -1, 0, call, this), event_free};
}

ReportStream::ReportStream(event_base* base, StreamSettings settings)
    : base_(base),
      settings_(std::move(settings)),
      reconnection_(makeTimer<&ReportStream::connect>()),
      lateness_(makeTimer<&ReportStream::giveUpWhatIsLate>()),
      sending_(makeTimer<&ReportStream::sendGathered>()),
      pause_(kShortestPause) {
  connect();
}

ReportStream::~ReportStream() {
  ending_ = true;
  if (connection_ != nullptr) redisAsyncFree(connection_);
}

void ReportStream::connect() {
  connection_ = open(settings_.address);
  if (connection_ == nullptr || connection_->err != 0) {
    if (connection_ != nullptr) redisAsyncFree(connection_);
    disconnected();
    return;
  }
  lookAgainIn(kLongestWait);
  connection_->data = this;
  redisLibeventAttach(connection_, base_);
  redisAsyncSetConnectCallback(connection_, [](const redisAsyncContext* connection, int status) {
    auto* self = static_cast<ReportStream*>(connection->data);
    if (status != REDIS_OK) {
      self->disconnected();
      return;
    }
    self->connected_ = true;
    self->pause_ = kShortestPause;
    std::fputs("the stream is there\n", stderr);
  });
  redisAsyncSetDisconnectCallback(connection_, [](const redisAsyncContext* connection, int) {
    std::fputs("the stream has gone\n", stderr);
    static_cast<ReportStream*>(connection->data)->disconnected();
  });
}

// The library frees the connection itself, and has settled what was sent.
void ReportStream::disconnected() {
  connection_ = nullptr;
  connected_ = false;
  for (const Gathered& report : std::exchange(gathered_, {})) {
    settleOne(report.done, "the stream went away");
  }
  if (!ending_) connectLater();
}

void ReportStream::connectLater() {
  const timeval pause = toTimeval(pause_);
  event_add(reconnection_.get(), &pause);
  pause_ = std::min(pause_ * 2, kLongestPause);
}

void ReportStream::add(const Report& report, Done done) {
  if (!connected_) {
    done("the stream is away");
    return;
  }
  if (waiting_ >= settings_.mostWaiting) {
    done("too many reports wait for the stream");
    return;
  }
  if (waiting_ == 0) lookAgainIn(kLongestWait);
  ++waiting_;
  gathered_.push_back({.path = std::string(report.path),
                       .parameters = std::string(report.parameters),
                       .body = std::string(report.body),
                       .since = Clock::now(),
                       .done = std::move(done)});
  // After everything else that has come in this turn of the loop.
  if (sent_.size() < kMostBatches) event_active(sending_.get(), EV_TIMEOUT, 0);
}

void ReportStream::sendGathered() {
  while (connected_ && !gathered_.empty() && sent_.size() < kMostBatches) sendBatch();
}

std::size_t ReportStream::sizeOfNextBatch() const {
  std::size_t count = 0;
  std::size_t bytes = 0;
  for (const Gathered& report : gathered_) {
    bytes += report.path.size() + report.parameters.size() + report.body.size();
    if (count == kMostInBatch || (count > 0 && bytes > kLargestBatch)) break;
    ++count;
  }
  return count;
}

void ReportStream::sendBatch() {
  const auto end = gathered_.begin() + static_cast<std::ptrdiff_t>(sizeOfNextBatch());
  const std::string backlog = std::to_string(settings_.backlog);
  std::vector<std::string_view> words = {"FCALL", "add_reports", "1", "reports", backlog};
  Batch batch{.since = gathered_.front().since, .done = {}};
  for (auto report = gathered_.begin(); report != end; ++report) {
    words.insert(words.end(), {report->path, report->parameters, report->body});
    batch.done.push_back(std::move(report->done));
  }
  std::vector<const char*> texts;
  std::vector<std::size_t> lengths;
  for (const std::string_view word : words) {
    texts.push_back(word.data());
    lengths.push_back(word.size());
  }
  sent_.push_back(std::move(batch));
  const int status = redisAsyncCommandArgv(
      connection_,
      [](redisAsyncContext*, void* reply, void* self) {
        static_cast<ReportStream*>(self)->settle(static_cast<redisReply*>(reply));
      },
      this, static_cast<int>(words.size()), texts.data(), lengths.data());
  gathered_.erase(gathered_.begin(), end);
  if (status == REDIS_OK) return;
  const Batch refused = std::move(sent_.back());
  sent_.pop_back();
  for (const Done& done : refused.done) settleOne(done, "the stream is going away");
}

void ReportStream::settle(const redisReply* reply) {
  const Batch batch = std::move(sent_.front());
  sent_.pop_front();
  if (reply != nullptr) sendGathered();
  for (std::size_t i = 0; i < batch.done.size(); ++i) {
    settleOne(batch.done[i], refusalOf(reply, i, batch.done.size()));
  }
}

void ReportStream::settleOne(const Done& done, std::string_view refusal) {
  --waiting_;
  done(refusal);
}

// A stream that has not answered for so long may be a machine that is gone. All that waits for it
// is refused, and the connection is made anew.
void ReportStream::giveUpWhatIsLate() {
  if (connection_ == nullptr) return;
  if (!connected_) {
    std::fputs("the stream cannot be reached\n", stderr);
    redisAsyncFree(connection_);
    disconnected();
    return;
  }
  if (waiting_ == 0) return;
  const auto since = sent_.empty() ? gathered_.front().since : sent_.front().since;
  const auto left = since + kLongestWait - Clock::now();
  if (left > 0ms) {
    lookAgainIn(std::chrono::ceil<std::chrono::microseconds>(left));
  } else {
    redisAsyncFree(connection_);
  }
}

void ReportStream::lookAgainIn(std::chrono::microseconds time) {
  const timeval interval = toTimeval(time);
  event_add(lateness_.get(), &interval);
}

}  // namespace zovk::intake
