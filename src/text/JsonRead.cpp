#include "text/JsonRead.h"

#include <boost/json/parse.hpp>

namespace zovk {

boost::json::value readJson(std::string_view text, boost::json::error_code& error) {
  boost::json::parse_options options;
  options.max_depth = kDeepestJson;
  return boost::json::parse({text.data(), text.size()}, error, {}, options);
}

std::string_view withoutByteOrderMark(std::string_view text) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (text.starts_with(kMark)) text.remove_prefix(kMark.size());
  return text;
}

}  // namespace zovk
