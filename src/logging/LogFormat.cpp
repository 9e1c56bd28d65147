#include "logging/LogFormat.h"

#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <boost/json/value.hpp>

namespace zovk {
namespace {

std::string withTextSpecifiers(std::string_view format) {
  std::string result(format);
  for (std::size_t i = 0; i + 1 < result.size(); ++i) {
    if (result[i] != '%') continue;
    if (result[i + 1] == '@') result[i + 1] = 's';
    ++i;  // also steps over the second sign of "%%"
  }
  return result;
}

}  // namespace

std::string logText(const boost::json::value& value) {
  return boost::json::serialize(value);
}

std::string logText(const boost::json::object& value) {
  return boost::json::serialize(value);
}

std::string expandLogFormat(std::string_view format, const LogValues& values) {
  const std::string text = withTextSpecifiers(format);
  try {
    return fmt::vsprintf(fmt::string_view(text),
                         fmt::basic_format_args<fmt::printf_context>(values));
  } catch (const fmt::format_error&) {
    return std::string(format);
  }
}

}  // namespace zovk
