#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/UrlSession.h"
#include "platform/linux/CurlHandles.h"
#include "platform/linux/ResponseSink.h"
#include "platform/linux/TemporaryDirectory.h"

namespace zovk {

/// One request on the wire. Session thread only; refers to the request and the sink.
class CurlTransfer {
 public:
  /// An answer that is longer ends in an error.
  static constexpr std::uint64_t kMaximumBody = 64U * 1024 * 1024;

  using TimePoint = std::chrono::steady_clock::time_point;

  CurlTransfer(const UrlRequest& request, ResponseSink& sink);
  CurlTransfer(const CurlTransfer&) = delete;
  CurlTransfer& operator=(const CurlTransfer&) = delete;

  /// Makes the request ready to be sent. An error means that it cannot be sent.
  std::optional<std::string> prepare(TemporaryDirectory& directory);
  CURL* handle() const { return easy_.get(); }
  /// When the transfer is to end unless something moves before, as seen at `now`.
  TimePoint deadline(TimePoint now);
  /// How the transfer ended.
  UrlResult result(CURLcode code) const;

 private:
  std::optional<std::string> parseUrl();
  void setConnection();
  void setRedirects();
  void setMethod();
  void setReception();
  curl_off_t bytesMoved() const;
  std::string errorText(CURLcode code) const;
  static std::size_t receive(char* bytes, std::size_t size, std::size_t count, void* transfer);
  std::optional<std::string> take(std::string_view piece);

  const UrlRequest& request_;
  ResponseSink& sink_;
  CurlUrl url_;
  CurlList headers_;
  std::array<char, CURL_ERROR_SIZE> errorBuffer_{};
  std::optional<std::string> ownError_;  // what ended the transfer from this side
  std::uint64_t received_ = 0;
  const std::chrono::seconds timeout_;
  curl_off_t bytesMoved_ = 0;
  TimePoint lastMove_;
  CurlEasy easy_;  // goes first: it refers to the others
};

}  // namespace zovk
