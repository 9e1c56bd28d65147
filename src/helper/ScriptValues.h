#pragma once

#include <string>

#include <jsc/jsc.h>

#include "helper/PageMessages.h"

namespace zovk::helper {

/// The text that a value is; of any other value what the engine makes of it.
std::string textOfScriptValue(JSCValue* value);
/// The value of a script that the game had evaluated. It is measured while it is written as text.
ScriptValue readScriptValue(JSCValue* value);

}  // namespace zovk::helper
