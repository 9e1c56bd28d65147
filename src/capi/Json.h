#pragma once

#include <optional>

#include <boost/json/value.hpp>

#include "capi/Boundary.h"
#include "text/JsonText.h"

namespace zovk {

/// Converts values between a page and a game. The game sees them as JSON texts, and NULL for no
/// value.

using JsonValue = std::optional<boost::json::value>;

/// Throws if the text is not JSON.
inline JsonValue valueOf(const char* json) {
  if (json == nullptr) return std::nullopt;
  auto value = jsonValue(json);
  if (!value) throw Fault{ZOVKPOPUP_ERROR_JSON, {}};
  return value;
}

/// The text of a value, for the length of a call.
class JsonText {
 public:
  explicit JsonText(const JsonValue& value) {
    if (value) text_ = jsonText(*value, false).value_or("null");
  }
  const char* get() const { return text_ ? text_->c_str() : nullptr; }

 private:
  std::optional<std::string> text_;
};

}  // namespace zovk
