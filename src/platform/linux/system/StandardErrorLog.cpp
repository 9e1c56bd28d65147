#include "platform/linux/system/StandardErrorLog.h"

#include <array>
#include <cerrno>
#include <ctime>

#include <fmt/format.h>
#include <unistd.h>

#include "platform/linux/system/WriteAll.h"

namespace zovk {
namespace {

std::string timeText() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  std::tm parts{};
  ::localtime_r(&now.tv_sec, &parts);
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%F %T", &parts);
  return fmt::format("{}.{:03}", text.data(), now.tv_nsec / 1'000'000);
}

}  // namespace

void StandardErrorLog::writeLine(std::string_view line) {
  if (sink_) {
    sink_(line);
    return;
  }
  // One write for the whole record keeps records of several threads apart. If standard error is
  // gone, the failure cannot be reported.
  (void)writeAll(STDERR_FILENO, record(line));
}

std::string StandardErrorLog::record(std::string_view line) {
  std::string text = fmt::format("{} {}[{}:{}] ", timeText(), program_invocation_short_name,
                                 ::getpid(), ::gettid());
  for (const char c : line) {
    text += c;
    if (c == '\n') text += '\t';
  }
  text += '\n';
  return text;
}

}  // namespace zovk
