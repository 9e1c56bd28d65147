#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <event2/event.h>
#include <event2/http.h>

#include "GameKeys.h"
#include "ReportStream.h"
#include "SignatureCheck.h"

namespace zovk::intake {

/// Takes reports from the edge by HTTP on a socket of this machine, as games have sent them.
/// Refuses those that no known game has signed, and answers 200 only when the stream has said that
/// it keeps the report.
class ReportServer {
 public:
  /// Throws when it cannot listen. When it is destroyed no report may wait for `stream`.
  ReportServer(event_base* base, const std::string& socket, const GameKeys& keys,
               ReportStream& stream);
  ReportServer(const ReportServer&) = delete;
  ReportServer& operator=(const ReportServer&) = delete;

  /// Refuses all further reports, and calls `ended` when none waits any more.
  void end(std::function<void()> ended);

 private:
  using Clock = std::chrono::steady_clock;

  void take(evhttp_request* request);
  void refuse(evhttp_request* request, const Refusal& refusal);
  void answer(evhttp_request* request, std::string_view refusal);
  void log(std::string_view refusal);

  const GameKeys& keys_;
  ReportStream& stream_;
  std::unique_ptr<evhttp, decltype(&evhttp_free)> http_;
  std::function<void()> ended_;  // Set when the end has begun.
  Clock::time_point logged_;
};

}  // namespace zovk::intake
