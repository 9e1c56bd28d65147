#include "helper/pad/PadPage.h"

#include <boost/json/array.hpp>
#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <boost/system/system_error.hpp>

#include "helper/page/PageScripts.h"

namespace zovk::helper {
namespace {

PadPage pageOf(const boost::json::object& found) {
  PadPage page;
  for (const boost::json::value& place : found.at("places").as_array()) {
    const auto& lengths = place.as_array();
    const auto length = [&lengths](std::size_t i) { return lengths.at(i).to_number<double>(); };
    page.places.push_back({length(0), length(1), length(2), length(3)});
    if (page.places.size() == kMaximumPadPlaces) break;
  }
  const auto focused = found.at("focused").to_number<std::int64_t>();
  if (focused >= 0 && static_cast<std::size_t>(focused) < page.places.size()) {
    page.focused = static_cast<std::size_t>(focused);
  }
  page.above = found.at("above").as_bool();
  page.below = found.at("below").as_bool();
  return page;
}

}  // namespace

PadPage readPadPage(const std::string& text) {
  try {
    return pageOf(boost::json::parse(text).as_object());
  } catch (const std::exception&) {
    return {};
  }
}

std::string padScript(const std::string& wish, int number) {
  std::string list = boost::json::serialize(boost::json::array{wish, number, kMaximumPadPlaces});
  list.front() = '(';
  list.back() = ')';
  return GamePad_js() + list;
}

}  // namespace zovk::helper
