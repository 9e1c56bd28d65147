#pragma once

#include <string>

#include <jsc/jsc.h>

#include "helper/page/PageMessages.h"

namespace zovk::helper {

/// Returns the text of a text value; of any other value, the web engine's text for it.
std::string textOfScriptValue(JSCValue* value);
/// Returns the value of a script that the game ran. It is measured while it is written as text.
ScriptValue readScriptValue(JSCValue* value);

}  // namespace zovk::helper
