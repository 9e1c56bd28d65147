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
  if (reply->type == REDIS_REPLY_STRING) return "";
  if (reply->type == REDIS_REPLY_ERROR && reply->len > 0) return {reply->str, reply->len};
  return "the stream gave an answer that says nothing";
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

// The library frees the connection itself.
void ReportStream::disconnected() {
  connection_ = nullptr;
  connected_ = false;
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
  if (waiting_.size() >= settings_.mostWaiting) {
    done("too many reports wait for the stream");
    return;
  }
  if (waiting_.empty()) lookAgainIn(kLongestWait);
  waiting_.push_back({.since = Clock::now(), .done = std::move(done)});
  send(report);
}

void ReportStream::send(const Report& report) {
  const std::string backlog = std::to_string(settings_.backlog);
  const std::array<std::string_view, 8> words = {
      "FCALL", "add_report", "1", "reports", backlog, report.path, report.parameters, report.body};
  std::array<const char*, words.size()> texts{};
  std::array<std::size_t, words.size()> lengths{};
  for (std::size_t i = 0; i < words.size(); ++i) {
    texts.at(i) = words.at(i).data();
    lengths.at(i) = words.at(i).size();
  }
  const int status = redisAsyncCommandArgv(
      connection_,
      [](redisAsyncContext*, void* reply, void* self) {
        static_cast<ReportStream*>(self)->settle(refusalOf(static_cast<redisReply*>(reply)));
      },
      this, static_cast<int>(words.size()), texts.data(), lengths.data());
  if (status == REDIS_OK) return;
  Done done = std::move(waiting_.back().done);
  waiting_.pop_back();
  done("the stream is going away");
}

void ReportStream::settle(std::string_view refusal) {
  Done done = std::move(waiting_.front().done);
  waiting_.pop_front();
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
  if (waiting_.empty()) return;
  const auto left = waiting_.front().since + kLongestWait - Clock::now();
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
