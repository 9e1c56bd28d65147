#pragma once

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <event2/event.h>
#include <hiredis/async.h>

namespace zovk::intake {

/// A report as the stream keeps it, byte for byte.
struct Report {
  std::string_view path;
  std::string_view parameters;
  std::string_view body;
};

struct StreamSettings {
  /// The path of a socket, which begins with a slash, or HOST:PORT.
  std::string address;
  /// How many entries the stream may have before it takes no more.
  std::size_t backlog = 0;
  /// How many reports may wait for the stream's answer.
  std::size_t mostWaiting = 0;
};

/// The stream of reports in Redis, through one connection that is made again whenever it is lost.
/// Reports that come while others are being written to the stream's disk go out together.
class ReportStream {
 public:
  /// Gets an empty text when the report is on the stream's disk, otherwise why it is not known to
  /// be there.
  using Done = std::function<void(std::string_view refusal)>;

  ReportStream(event_base* base, StreamSettings settings);
  ~ReportStream();
  ReportStream(const ReportStream&) = delete;
  ReportStream& operator=(const ReportStream&) = delete;

  /// Adds the report, which need not outlive the call. Calls `done` once, within the call or later.
  void add(const Report& report, Done done);

  /// Returns how many reports still wait for the stream's answer.
  std::size_t waiting() const { return waiting_; }

 private:
  using Clock = std::chrono::steady_clock;
  using Timer = std::unique_ptr<event, decltype(&event_free)>;

  /// A report that is not sent yet.
  struct Gathered {
    std::string path;
    std::string parameters;
    std::string body;
    Clock::time_point since;
    Done done;
  };
  /// Reports that were sent with one command.
  struct Batch {
    Clock::time_point since;
    std::vector<Done> done;
  };

  template <void (ReportStream::*Method)()>
  Timer makeTimer();
  void connect();
  void connectLater();
  void disconnected();
  void sendGathered();
  void sendBatch();
  std::size_t sizeOfNextBatch() const;
  void settle(const redisReply* reply);
  void settleOne(const Done& done, std::string_view refusal);
  void giveUpWhatIsLate();
  void lookAgainIn(std::chrono::microseconds time);

  event_base* base_;
  const StreamSettings settings_;
  Timer reconnection_;
  Timer lateness_;
  Timer sending_;
  std::chrono::milliseconds pause_;
  redisAsyncContext* connection_ = nullptr;
  bool connected_ = false;
  bool ending_ = false;
  std::size_t waiting_ = 0;
  std::deque<Gathered> gathered_;
  /// In the order of their commands, which is that of the answers.
  std::deque<Batch> sent_;
};

}  // namespace zovk::intake
