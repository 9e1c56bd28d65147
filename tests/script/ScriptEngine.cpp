#include "script/ScriptEngine.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zovk {
namespace {

std::string readFile(const char* path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error(std::string("cannot read ") + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

ScriptEngine::ScriptEngine() : context_(jsc_context_new()) {
  run(readFile(ZOVK_SCRIPT_PAGE));
}

std::string ScriptEngine::run(const std::string& script) {
  const JscPtr<JSCValue> value(
      jsc_context_evaluate(context_.get(), script.data(), static_cast<gssize>(script.size())));
  if (auto* const exception = jsc_context_get_exception(context_.get())) {
    const GText message(jsc_exception_to_string(exception));
    jsc_context_clear_exception(context_.get());
    throw std::runtime_error(message.get());
  }
  const GBytesPtr bytes(jsc_value_to_string_as_bytes(value.get()));
  gsize size = 0;
  const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes.get(), &size));
  return {data, size};
}

std::string ScriptEngine::errorOf(const std::string& script) {
  try {
    run(script);
    return "";
  } catch (const std::runtime_error& error) {
    return error.what();
  }
}

void ScriptEngine::runTimers() {
  while (run("page.timers.length") != "0") run("page.runTimer()");
}

}  // namespace zovk
