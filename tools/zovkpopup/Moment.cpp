#include "zovkpopup/Moment.h"

#include <charconv>
#include <chrono>
#include <ctime>

#include "zovkpopup/ToolError.h"

namespace zovk::tool {
namespace {

bool readsWhole(const std::string& text, const char* format, std::tm& parts) {
  parts = {};
  const char* const end = ::strptime(text.c_str(), format, &parts);
  return end != nullptr && *end == '\0';
}

}  // namespace

double momentOf(const std::string& text) {
  if (text.empty()) {
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration<double>(now).count();
  }
  double seconds = 0;
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, seconds, std::chars_format::fixed);
  if (error == std::errc() && end == last) return seconds;
  const std::string stamp = text.back() == 'Z' ? text.substr(0, text.size() - 1) : text;
  std::tm parts{};
  for (const char* format : {"%Y-%m-%dT%H:%M:%S", "%Y-%m-%dT%H:%M", "%Y-%m-%d"}) {
    if (readsWhole(stamp, format, parts)) return static_cast<double>(::timegm(&parts));
  }
  throw ToolError("--at " + text +
                  ": is no time; write seconds since 1970, or such as 2026-01-31T18:00 (UTC)");
}

}  // namespace zovk::tool
