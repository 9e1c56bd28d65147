#include "bridge/BridgeInbox.h"

#include <string_view>

#include "logging/ZPLogger.h"
#include "text/JsonText.h"

namespace zovk {
namespace {

/// Enough to find a mistake by.
constexpr std::size_t kMistakesASecond = 20;
constexpr std::size_t kLongestMistake = std::size_t{16} * 1024;
constexpr std::size_t kMostWaitingText = std::size_t{128} * 1024 * 1024;

/// Returns the part of a wrong value that people care to read.
std::string textForLog(const boost::json::value& value) {
  if (const auto* text = value.if_string()) {
    return shortText(std::string_view(*text), kLongestMistake);
  }
  return shortJsonText(value, kLongestMistake).value_or("(null)");
}

}  // namespace

BridgeInbox::BridgeInbox(const Clock& clock)
    : mistakes_([&clock] { return clock.systemUptime(); }, kMistakesASecond) {}

bool BridgeInbox::mayTake(std::size_t size) const {
  std::size_t waiting = size;
  for (const ReceivedQueue& queue : queues) waiting += queue.size();
  return size <= kLongestQueue && waiting <= kMostWaitingText;
}

void BridgeInbox::logMistake(const std::string& what, const boost::json::value& value) {
  if (const auto line = mistakes_.line(what + textForLog(value))) ZPLogger::writeDirectly(*line);
}

void BridgeInbox::logHeldMistakes() {
  if (const auto line = mistakes_.rest()) ZPLogger::writeDirectly(*line);
}

}  // namespace zovk
