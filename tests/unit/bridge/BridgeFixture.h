#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <boost/json/parse.hpp>
#include <boost/json/serialize.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "bridge/ZOVKPopupWebViewJavascriptBridge_js.h"
#include "platform/memory/MemoryPlatform.h"
#include "zovkpopup/BridgeBase.h"

namespace zovk {

/// Records the scripts that the bridge runs.
class ScriptRecorder : public ZOVKPopupWebViewJavascriptBridgeBaseDelegate {
 public:
  std::string _evaluateJavascript(const std::string& script) override {
    scripts.push_back(script);
    if (whenRun) whenRun(script);
    return "of no interest";
  }

  std::vector<std::string> scripts;
  std::function<void(const std::string&)> whenRun;
};

inline constexpr const char* kNoQueue =
    "WebViewJavascriptBridge: WARNING: ObjC got nil while fetching the message queue JSON from "
    "webview. This can happen if the WebViewJavascriptBridge JS is not currently present in the "
    "webview, e.g if the webview just loaded a new page.";

/// Returns the command that passes a JSON text, without backslashes and single quotes, to the page.
inline std::string commandFor(const std::string& json) {
  std::string escaped;
  for (const char c : json) {
    if (c == '"') escaped += '\\';
    escaped += c;
  }
  return "WebViewJavascriptBridge._handleMessageFromObjC('" + escaped + "');";
}

/// A bridge on a platform in memory, its scripts recorded.
class BridgeFixture : public ::testing::Test {
 protected:
  using Bridge = ZOVKPopupWebViewJavascriptBridgeBase;
  using Value = std::optional<boost::json::value>;

  BridgeFixture() {
    ZPLogger::setEnvironment(memoryLogEnvironment(memory_->log, false));
    bridge_->setDelegate(page_);
  }
  ~BridgeFixture() override {
    memory_->shutDown();  // a script under way holds the bridge, and that the platform
    ZPLogger::setEnvironment({});
  }

  /// Puts the bridge into the state after the injection, with nothing recorded yet.
  void open() {
    bridge_->setupMessageQueue();
    page_->scripts.clear();
  }
  std::vector<std::string>& scripts() { return page_->scripts; }
  /// Returns all lines except those of the traffic, which another test of the process may have
  /// switched on.
  std::vector<std::string> warnings() const {
    std::vector<std::string> lines = memory_->log.lines();
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("WVJB "); });
    return lines;
  }
  /// Returns a handler's data as a text to compare: "none" or JSON.
  static std::string textOf(const Value& value) {
    return value ? boost::json::serialize(*value) : "none";
  }
  Bridge::ResponseCallback record(std::vector<std::string>& into) {
    return [&into](const Value& data) { into.push_back(textOf(data)); };
  }
  /// Makes `handlerName` record its data.
  void noteCallsOf(const std::string& handlerName) {
    bridge_->setHandler(handlerName, [this](const Value& data, const Bridge::ResponseCallback&) {
      told_.push_back(textOf(data));
    });
  }

  std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
  std::shared_ptr<ScriptRecorder> page_ = std::make_shared<ScriptRecorder>();
  std::shared_ptr<Bridge> bridge_ = std::make_shared<Bridge>(memory_->shared());
  std::vector<std::string> told_;
};

}  // namespace zovk
