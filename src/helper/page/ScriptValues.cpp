#include "helper/page/ScriptValues.h"

#include "helper/GObjectPtr.h"
#include "helper/page/PageScripts.h"
#include "protocol/FrameCodec.h"

namespace zovk::helper {
namespace {

/// Around the value stands an event, and numbers may be written longer there.
constexpr std::size_t kMaximumResultText = kMaximumFrameLength - 512U * 1024;

using Value = GObjectPtr<JSCValue>;

Value member(JSCValue* object, const char* name) {
  return Value::adopt(jsc_value_object_get_property(object, name));
}

}  // namespace

std::string textOfScriptValue(JSCValue* value) {
  GBytes* bytes = jsc_value_to_string_as_bytes(value);
  gsize size = 0;
  const auto* data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
  std::string text(data, size);
  g_bytes_unref(bytes);
  return text;
}

ScriptValue readScriptValue(JSCValue* value) {
  if (value == nullptr) return {};
  // A value that came from a page is a copy in this process: no function of the page is called
  // here.
  JSCContext* context = jsc_value_get_context(value);
  const std::string script = boundedJsonScript(kMaximumResultText);
  const Value jsonOf = Value::adopt(jsc_context_evaluate(context, script.c_str(), -1));
  const Value result =
      Value::adopt(jsc_value_function_call(jsonOf.get(), JSC_TYPE_VALUE, value, G_TYPE_NONE));
  const bool failed = jsc_context_get_exception(context) != nullptr;
  jsc_context_clear_exception(context);
  if (failed || !jsc_value_is_object(result.get())) return {};
  const std::string problem = textOfScriptValue(member(result.get(), "problem").get());
  if (!problem.empty()) return {std::nullopt, problem};
  const Value text = member(result.get(), "text");
  if (!jsc_value_is_string(text.get())) return {};
  return readScriptText(textOfScriptValue(text.get()), kMaximumResultText);
}

}  // namespace zovk::helper
