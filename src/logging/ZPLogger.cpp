#include "logging/ZPLogger.h"

#include <algorithm>
#include <memory>
#include <mutex>

#include <fmt/format.h>

#include "logging/LogPause.h"
#include "support/Utf8.h"
#include "zovkpopup/ThreadSafety.h"

namespace zovk {
namespace {

constexpr std::string_view kDebugKey = "ZOVK_DEBUG";

// Never destroyed: threads may still log while the process exits.
struct State {
  Mutex mutex;
  std::shared_ptr<const LogEnvironment> environment ZOVK_GUARDED_BY(mutex);
  std::once_flag settingRead;
  std::atomic<bool> enableDebug{false};
};

State& state() {
  static auto* const instance = new State;
  return *instance;
}

std::shared_ptr<const LogEnvironment> environment() {
  const LockGuard lock(state().mutex);
  return state().environment;
}

// Calls `visit` with each piece of `text` between separators until it returns false.
template <class Visit>
void forEachPiece(std::string_view text, char separator, Visit visit) {
  while (true) {
    const std::size_t end = text.find(separator);
    if (!visit(text.substr(0, end)) || end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

// Returns the value of a line that sets the debug switch, or nothing for any other line.
std::optional<std::string> debugValueOfLine(std::string_view line) {
  if (line.find('#') != std::string_view::npos) return std::nullopt;
  if (line.find(kDebugKey) == std::string_view::npos) return std::nullopt;
  std::string compact(line);
  std::erase_if(compact, [](char c) { return c == '\r' || c == ' '; });
  std::optional<std::string> value;
  int index = 0;
  forEachPiece(compact, '=', [&](std::string_view piece) {
    if (index++ == 1) value = piece;
    return index < 2;
  });
  return value;
}

std::optional<std::string> debugValueOfFile(std::string_view text) {
  std::optional<std::string> value;
  forEachPiece(text, '\n', [&](std::string_view line) {
    value = debugValueOfLine(line);
    return !value.has_value();
  });
  return value;
}

}  // namespace

std::atomic<ZPLogger::Switch> ZPLogger::switch_{Switch::kUndecided};

void ZPLogger::setEnvironment(LogEnvironment newEnvironment) {
  auto shared = std::make_shared<const LogEnvironment>(std::move(newEnvironment));
  const LockGuard lock(state().mutex);
  state().environment = std::move(shared);
}

void ZPLogger::getSetting() {
  const auto source = environment();
  const bool hasBundle = source && source->hasSettingBundle && source->hasSettingBundle();
  writeDirectly("Get Config File");
  if (!hasBundle) {
    if (source && source->infoFlag && source->infoFlag(kDebugKey)) {
      writeDirectly("Success get ZOVK_DEBUG");
      state().enableDebug = true;
    }
    return;
  }
  const auto text = source->readSettingFile ? source->readSettingFile() : std::nullopt;
  if (!text || !isUtf8(*text)) return;
  const auto value = debugValueOfFile(*text);
  if (!value) return;
  writeDirectly("Success get ZOVK_DEBUG");
  if (*value == "1") state().enableDebug = true;
}

bool ZPLogger::isEnableDebug() {
  return state().enableDebug;
}

bool ZPLogger::decide() {
  std::call_once(state().settingRead, [] {
    getSetting();
    switch_.store(state().enableDebug ? Switch::kOn : Switch::kOff, std::memory_order_release);
  });
  return switch_.load(std::memory_order_acquire) == Switch::kOn;
}

void ZPLogger::writeDirectly(std::string_view line) {
  const auto sink = environment();
  if (sink && sink->writeLine) sink->writeLine(line);
}

void ZPLogger::writeDebugLine(const char* fileName, const char* function, int line,
                              std::string_view format, const LogValues& values) {
  if (LogPause::isOnForThisThread()) return;
  writeDirectly(
      fmt::format("[Debug]{} {} {} {}", fileName, function, line, expandLogFormat(format, values)));
}

void ZPLogger::writeErrorLine(std::string_view format, const LogValues& values) {
  if (LogPause::isOnForThisThread()) return;
  writeDirectly(fmt::format("[Error] {}", expandLogFormat(format, values)));
}

}  // namespace zovk
