#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "GameKeys.h"
#include "ReportStream.h"

namespace zovk::intake {

/// A report as a game has sent it.
struct SentReport {
  std::string_view path;   ///< Without percent-encoding.
  std::string_view query;  ///< As it stands in the address.
  std::string_view body;
};

/// Why a report is refused, for whoever sent it.
struct Refusal {
  int status = 0;
  std::string message;
};

/// Returns the report as the stream is to keep it, within what was sent, or why it is refused.
std::variant<Report, Refusal> checkSignature(const SentReport& sent, const GameKeys& keys);

}  // namespace zovk::intake
