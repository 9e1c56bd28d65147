// What a hostile page can make of its queue, against a bridge whose handlers do all that handlers
// may do.
#include <memory>
#include <string>

#include "fuzz/Fuzz.h"
#include "platform/memory/MemoryPlatform.h"
#include "zovkpopup/BridgeBase.h"

namespace zovk {
namespace {

using Bridge = ZOVKPopupWebViewJavascriptBridgeBase;
using Value = std::optional<boost::json::value>;

/// Checks that every command is one whole call with one literal.
class CommandCheck final : public ZOVKPopupWebViewJavascriptBridgeBaseDelegate {
 public:
  std::string _evaluateJavascript(const std::string& command) override {
    const std::string start = "WebViewJavascriptBridge._handleMessageFromObjC('";
    if (!command.starts_with(start) || !command.ends_with("');")) fail("malformed", command);
    const std::string literal = command.substr(start.size(), command.size() - start.size() - 3);
    for (const char* lineEnd : {"\n", "\r", "\u2028", "\u2029"}) {
      if (literal.find(lineEnd) != std::string::npos) fail("a line end", command);
    }
    for (std::size_t i = 0; i < literal.size(); ++i) {
      if (literal[i] == '\'') fail("the literal ends early", command);
      if (literal[i] == '\\' && ++i == literal.size()) fail("the literal does not end", command);
    }
    return {};
  }
};

void addHandlers(const std::shared_ptr<Bridge>& bridge, Bridge::ResponseCallback& kept) {
  const std::weak_ptr<Bridge> weak = bridge;
  const auto set = [&](const char* name, auto act) {
    bridge->setHandler(name, [weak, act](const Value& data, const Bridge::ResponseCallback& reply) {
      if (const auto self = weak.lock()) act(*self, data, reply);
    });
  };
  set("echo", [](Bridge&, const Value& data, const auto& reply) {
    reply(data);
    reply(std::nullopt);
  });
  set("keep", [&kept](Bridge&, const Value&, const auto& reply) { kept = reply; });
  set("reset", [](Bridge& self, const Value&, const auto&) { self.reset(); });
  set("open", [](Bridge& self, const Value&, const auto&) { self.setupMessageQueue(); });
  set("remove", [](Bridge& self, const Value&, const auto&) { self.removeHandler("remove"); });
  set("call", [](Bridge& self, const Value& data, const auto& reply) {
    self.sendData(
        data, [reply](const Value& answer) { reply(answer); }, "page");
  });
}

}  // namespace

void fuzz(std::string_view input) {
  static const auto memory = std::make_shared<MemoryPlatform>();
  static const auto check = std::make_shared<CommandCheck>();
  const std::string text(input);
  Bridge::enableLogging();
  Bridge::setLogMaxLength(7);
  const auto bridge = std::make_shared<Bridge>(memory->shared());
  Bridge::ResponseCallback kept;
  bridge->setDelegate(check);
  addHandlers(bridge, kept);
  bridge->setupMessageQueue();
  bridge->sendData(
      boost::json::value(text), [](const Value&) {}, text);
  bridge->flushMessageQueue(text);
  if (kept) kept(boost::json::value(text));
  // The same bytes as an address, and in the log.
  (void)bridge->isWebViewJavascriptBridgeURL(text);
  (void)bridge->isWebViewJavascriptBridgeURL("https://" + text);
  bridge->_log("SEND", text);
  bridge->close();
  kept = nullptr;
  if (bridge.use_count() != 1) fail("the bridge is still held", text);
}

}  // namespace zovk
