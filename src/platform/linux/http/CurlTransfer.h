#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/http/CurlHandles.h"
#include "platform/linux/http/CurlSessionSettings.h"
#include "platform/linux/http/ResponseSink.h"
#include "zovkpopup/platform/UrlSession.h"

namespace zovk {

/// One request on the wire. Session thread only. Refers to the objects it is made from.
class CurlTransfer {
 public:
  /// An answer that is longer ends in an error.
  static constexpr std::uint64_t kMaximumBody = 64U * 1024 * 1024;

  using TimePoint = std::chrono::steady_clock::time_point;

  CurlTransfer(const UrlRequest& request, ResponseSink& sink, const CurlSessionSettings& settings);
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  /// Prepares the request. Returns an error if it cannot be sent.
  std::optional<std::string> prepare(SessionFiles& files);
  CURL* handle() const { return easy_.get(); }
  /// Returns the time at which the transfer ends unless bytes move before, as seen at `now`.
  TimePoint deadline(TimePoint now);
  /// Returns the greatest number of descriptors that the transfer may hold now.
  std::size_t descriptors() const;
  /// Returns how the transfer ended.
  UrlResult result(CURLcode code) const;
  /// Returns what the answer says about the version of its body.
  AnswerVersion version() const;

 private:
  template <typename Value>
  void set(CURLoption option, Value value);
  template <typename Value>
  Value info(CURLINFO what) const;
  std::optional<std::string> parseUrl();
  void setConnection();
  void setSpeed();
  void setTrust();
  void setRedirects();
  void setMethod();
  void setHeaders();
  void setReception();
  curl_off_t bytesMoved() const;
  std::string errorText(CURLcode code) const;
  std::string answerHeader(const char* name) const;
  void addHeader(const std::string& line);
  static std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* transfer);
  std::optional<std::string> take(std::string_view piece);

  const UrlRequest& request_;
  ResponseSink& sink_;
  const CurlSessionSettings& settings_;
  CurlUrl url_;
  CurlList headers_;
  std::array<char, CURL_ERROR_SIZE> errorBuffer_{};
  std::optional<std::string> ownError_;  // what ended the transfer from this side
  std::uint64_t received_ = 0;
  const std::chrono::milliseconds longestStall_;
  const TimePoint start_ = std::chrono::steady_clock::now();
  curl_off_t bytesMoved_ = 0;
  TimePoint lastMove_ = start_;
  CurlEasy easy_;  // goes first: it refers to the others
};

}  // namespace zovk
