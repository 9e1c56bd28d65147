#pragma once

#include <optional>
#include <string>

#include <boost/json/value.hpp>
#include <jsc/jsc.h>

namespace zovk {

struct ScriptValue {
  /// Absent when the script's value is undefined, a function, or cannot be written as JSON.
  std::optional<boost::json::value> value;
  /// Why a value that is there could not be taken; empty otherwise.
  std::string error;
};

ScriptValue readScriptValue(JSCValue* value);

}  // namespace zovk
