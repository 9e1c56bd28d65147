#include "zovkpopup/ShapeCheck.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <boost/json/serialize.hpp>
#include <fmt/format.h>

#include "engine/DocumentParser.h"
#include "text/JsonNumbers.h"
#include "zovkpopup/Spelling.h"

namespace zovk::tool {
namespace {

std::string kindOf(const boost::json::value& value) {
  if (value.is_null()) return "null";
  if (value.is_bool()) return "a boolean";
  if (value.is_string()) return "a text";
  if (value.is_array()) return "an array";
  return value.is_object() ? "an object" : "a number";
}

// Returns whether the parser can read no number from the value, and so rejects the whole document.
bool hasNoNumber(const boost::json::value& value) {
  return value.is_null() || value.is_array() || value.is_object();
}

void warnOfUnknown(std::string_view key, const std::string& path,
                   const std::vector<std::string_view>& known, Problems& problems) {
  if (key == "page" && path != "/page") {
    return problems.warning(path, "is known to the development service only; games pass over it");
  }
  const std::string_view meant = nearestWord(key, known);
  problems.warning(
      path, meant.empty() ? "is no member that the engine knows"
                          : fmt::format("is no member that the engine knows; is {} meant?", meant));
}

void warnOfConversion(const boost::json::value& value, const std::string& path,
                      Problems& problems) {
  const std::int32_t counts = intValue(value);
  if (!value.is_number()) {
    return problems.warning(
        path, fmt::format("is {} and counts as {}; write a number", kindOf(value), counts));
  }
  const double number = value.to_number<double>();
  if (number == counts) return;
  const bool outside = std::abs(number) > std::numeric_limits<std::int32_t>::max();
  problems.warning(path,
                   fmt::format("is {} and counts as {}{}", boost::json::serialize(value), counts,
                               outside ? "; numbers have 32 bits, and times are in seconds"
                                       : "; write a whole number"));
}

void checkField(const DocumentField& field, const boost::json::value& value,
                const std::string& path, Problems& problems) {
  if (field.isText()) {
    if (!value.is_string()) {
      problems.warning(path, "is " + kindOf(value) + " and counts as absent; write a text");
    }
  } else if (hasNoNumber(value)) {
    problems.error(path, "is " + kindOf(value) + " where there must be a number");
  } else {
    warnOfConversion(value, path, problems);
  }
}

void checkEntry(const boost::json::value& entry, std::size_t index, Problems& problems) {
  const auto* const object = entry.if_object();
  if (object == nullptr || object->empty()) {
    return problems.error(entryPath(index), "is no object with members, and is passed over");
  }
  std::vector<std::string_view> known;
  for (const DocumentField& field : documentFields()) {
    known.push_back(field.key);
    const auto* const value = object->if_contains(field.key);
    if (value != nullptr) checkField(field, *value, entryPath(index, field.key), problems);
  }
  for (const auto& [key, value] : *object) {
    if (std::find(known.begin(), known.end(), std::string_view(key)) != known.end()) continue;
    warnOfUnknown(key, entryPath(index, key), known, problems);
  }
}

void checkHead(const boost::json::object& document, Problems& problems) {
  for (const std::string_view key : {"code", "server_time"}) {
    const auto* const value = document.if_contains(key);
    if (value == nullptr) continue;
    const std::string path = "/" + std::string(key);
    if (hasNoNumber(*value)) {
      problems.error(path, "is " + kindOf(*value) + " where there must be a number");
    } else if (key == "code" && intValue(*value) != 0) {
      problems.error(path, fmt::format("is {}; the engine rejects anything but 0",
                                       boost::json::serialize(*value)));
    }
  }
}

void checkPopups(const boost::json::object& document, Problems& problems) {
  const auto* const popups = document.if_contains("popups");
  if (popups == nullptr) return problems.error("/popups", "is missing");
  if (!popups->is_array()) return problems.error("/popups", "is " + kindOf(*popups) + ", no array");
  if (popups->get_array().empty()) return problems.error("/popups", "is empty");
  for (std::size_t i = 0; i < popups->get_array().size(); ++i) {
    checkEntry(popups->get_array()[i], i, problems);
  }
}

}  // namespace

void checkShape(const boost::json::value& document, std::uint64_t configType, Problems& problems) {
  const auto* const object = document.if_object();
  if (object == nullptr) {
    return problems.error("", "the document is " + kindOf(document) + ", no object");
  }
  if (configType == kConfigRemote) checkHead(*object, problems);
  const std::vector<std::string_view> known = {"code", "message", "server_time", "popups"};
  for (const auto& [key, value] : *object) {
    if (std::find(known.begin(), known.end(), std::string_view(key)) != known.end()) continue;
    warnOfUnknown(key, "/" + std::string(key), known, problems);
  }
  checkPopups(*object, problems);
}

}  // namespace zovk::tool
