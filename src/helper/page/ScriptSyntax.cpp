#include "helper/page/ScriptSyntax.h"

#include <cstdio>
#include <exception>
#include <fstream>
#include <iterator>
#include <string>

#include <boost/json/array.hpp>
#include <boost/json/object.hpp>
#include <boost/json/serialize.hpp>
#include <jsc/jsc.h>

#include "helper/GObjectPtr.h"
#include "text/JsonRead.h"

namespace zovk::helper {
namespace {

std::string messageOf(JSCException* exception) {
  const char* const text = jsc_exception_get_message(exception);
  return text == nullptr ? "it cannot be parsed" : text;
}

boost::json::value faultOf(JSCContext* context, const boost::json::object& script) {
  const std::string text(script.at("text").as_string());
  const auto line = static_cast<unsigned>(script.at("line").to_number<std::int64_t>());
  const auto mode =
      script.at("module").as_bool() ? JSC_CHECK_SYNTAX_MODE_MODULE : JSC_CHECK_SYNTAX_MODE_SCRIPT;
  JSCException* thrown = nullptr;
  const auto result = jsc_context_check_syntax(
      context, text.data(), static_cast<gssize>(text.size()), mode, "page", line, &thrown);
  if (result == JSC_CHECK_SYNTAX_RESULT_SUCCESS || thrown == nullptr) return nullptr;
  const auto exception = GObjectPtr<JSCException>::adopt(thrown);
  return boost::json::object{{"line", jsc_exception_get_line_number(exception.get())},
                             {"message", messageOf(exception.get())}};
}

// Throws if these are not scripts.
boost::json::array faultsOf(const boost::json::value& scripts) {
  const auto context = GObjectPtr<JSCContext>::adopt(jsc_context_new());
  boost::json::array faults;
  for (const boost::json::value& script : scripts.as_array()) {
    faults.push_back(faultOf(context.get(), script.as_object()));
  }
  return faults;
}

}  // namespace

int checkScripts(const char* scripts, const char* faults) try {
  std::ifstream in(scripts, std::ios::binary);
  const std::string text(std::istreambuf_iterator<char>(in), {});
  boost::json::error_code error;
  const boost::json::array found = faultsOf(readJson(text, error));
  std::ofstream out(faults, std::ios::binary);
  out << boost::json::serialize(found);
  out.close();
  return out ? 0 : 1;
} catch (const std::exception& error) {
  std::fprintf(stderr, "zovkpopup-helper: the scripts cannot be read: %s\n", error.what());
  return 1;
}

}  // namespace zovk::helper
