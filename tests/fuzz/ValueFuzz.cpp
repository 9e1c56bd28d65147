// What a page can post: values that only a script can make. An input is a list of steps, each of
// which makes a value of the last one; the result is what the page posts. The input as it stands is
// what a broken guard of the page's messages could hand on.
#include <array>

#include <boost/json/serialize.hpp>
#include <jsc/jsc.h>

#include "fuzz/Fuzz.h"
#include "helper/GObjectPtr.h"
#include "helper/page/ScriptValues.h"
#include "protocol/FrameCodec.h"

namespace zovk::helper {
namespace {

/// `v` is the value so far, `n` a number from 0 to 15, `t` a text of the input.
constexpr std::array kSteps = {
    "v = [v, v]",
    "v = {a: v, b: n}",
    "v = [v]",
    "v = {toJSON() { return v0; }}",
    "v = {get a() { throw new Error(t); }, b: v}",
    "v = {get a() { return v0; }}",
    "v = {}; v.self = v",
    "v = new Array(n * n * 16)",
    "v = new Array(n).fill(v)",
    "v = t",
    "v = t.repeat(n)",
    "v = '\\ud800' + t",
    "v = t + '\\udc00\\u2028\\0'",
    "v = n / 0",
    "v = -1 / n",
    "v = n * 1e300 * 1e10",
    "v = 2 ** 53 + n",
    "v = BigInt(n)",
    "v = Symbol(t)",
    "v = undefined",
    "v = null",
    "v = () => v0",
    "v = new Date(n / 0)",
    "v = new Date(n)",
    "v = new Map([[t, v]])",
    "v = new Proxy({}, {get() { return v0; }, ownKeys() { return [t]; }})",
    "v = new Proxy([], {get() { throw v0; }})",
    "v = new Uint8Array(n)",
    "v = new String(t)",
    "v = Object.assign(Object.create(null), {[t]: v})",
    "v = {['__proto__']: v}",
    "v = JSON.parse('[' + t + ']')",
    "v = {length: 2 ** 31, 0: v}",
    "Array.prototype.toJSON = () => t",
    "Object.prototype.toJSON = undefined",
    "JSON.stringify = () => t",
};

class Script {
 public:
  Script()
      : context_(GObjectPtr<JSCContext>::adopt(jsc_context_new_with_virtual_machine(machine()))) {
    run("var v = 1, v0, n, t");
  }

  /// What goes wrong in a step leaves the value as it is.
  void run(const std::string& code) {
    GObjectPtr<JSCValue>::adopt(
        jsc_context_evaluate(context_.get(), code.data(), static_cast<gssize>(code.size())));
    jsc_context_clear_exception(context_.get());
  }
  void set(const char* name, const std::string& text) {
    const auto value =
        GObjectPtr<JSCValue>::adopt(jsc_value_new_string(context_.get(), text.c_str()));
    jsc_context_set_value(context_.get(), name, value.get());
  }
  GObjectPtr<JSCValue> value() {
    return GObjectPtr<JSCValue>::adopt(jsc_context_get_value(context_.get(), "v"));
  }
  bool failed() { return jsc_context_get_exception(context_.get()) != nullptr; }

 private:
  /// One for all inputs, as it takes long to make. Each input has a context of its own.
  static JSCVirtualMachine* machine() {
    static JSCVirtualMachine* const one = jsc_virtual_machine_new();
    return one;
  }

  const GObjectPtr<JSCContext> context_;
};

/// A game gets what is read here, or hears why not.
void expectSendable(const ScriptValue& read, std::string_view input) {
  if (!read.value) return;
  if (!read.error.empty()) fail("a value and an error", input);
  FrameDecoder decoder;
  const auto frame = encodeFrame({{"type", "web.message"}, {"body", *read.value}});
  if (!frame) fail("a value that does not fit into a frame", input);
  decoder.feed(*frame);
  if (!decoder.next()) fail("a value that a game cannot take", input);
}

void fuzzValues(std::string_view input) {
  Script script;
  constexpr std::size_t kMostSteps = 28;  // lists that double have a million members then
  std::size_t steps = 0;
  for (const std::string& line : linesOf(input)) {
    if (line.empty() || ++steps > kMostSteps) continue;
    const auto sign = static_cast<unsigned char>(line.front());
    script.set("t", line.substr(1));
    script.run("n = " + std::to_string(line.size() % 16) + "; v0 = v");
    script.run(kSteps.at(sign % kSteps.size()));
  }
  expectSendable(readPageMessage(input).body, input);
  const auto value = script.value();
  const ScriptValue read = readScriptValue(value.get());
  if (script.failed()) fail("the page is left with an exception", input);
  expectSendable(read, input);
}

}  // namespace
}  // namespace zovk::helper

void zovk::fuzz(std::string_view input) {
  helper::fuzzValues(input);
}

// The script engine keeps what it owns where the search for leaks does not look.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libjavascriptcoregtk";
}
