#include <cstdlib>
#include <memory>
#include <string>

#include <boost/json/value.hpp>
#include <gtest/gtest.h>

#include "platform/memory/MemoryPlatform.h"
#include "script/ScriptEngine.h"
#include "zovkpopup/BridgeBase.h"

namespace zovk {
namespace {

/// Runs the bridge's scripts in an engine, as a page would.
class EnginePage final : public ZOVKPopupWebViewJavascriptBridgeBaseDelegate {
 public:
  std::string _evaluateJavascript(const std::string& script) override { return engine.run(script); }
  ScriptEngine engine;
};

std::string utf8(char32_t character) {
  const auto byte = [](char32_t bits) {
    return static_cast<char>(static_cast<unsigned char>(bits));
  };
  if (character < 0x80) return {byte(character)};
  if (character < 0x800) return {byte(0xC0 | character >> 6), byte(0x80 | (character & 0x3F))};
  if (character < 0x10000) {
    return {byte(0xE0 | character >> 12), byte(0x80 | (character >> 6 & 0x3F)),
            byte(0x80 | (character & 0x3F))};
  }
  return {byte(0xF0 | character >> 18), byte(0x80 | (character >> 12 & 0x3F)),
          byte(0x80 | (character >> 6 & 0x3F)), byte(0x80 | (character & 0x3F))};
}

class CommandText : public ::testing::Test {
 protected:
  CommandText() {
    bridge_->setDelegate(page_);
    page_->engine.run(
        "window.WVJBCallbacks = [function (bridge) {"
        "  bridge.registerHandler('a', function (data) { window.received = data; }); }]");
    bridge_->injectJavascriptFile();
    page_->engine.runTimers();
    page_->engine.run("WebViewJavascriptBridge.disableJavscriptAlertBoxSafetyTimeout()");
  }
  /// Returns what arrives in the page when `text` is sent.
  std::string arrived(const std::string& text) {
    bridge_->sendData(boost::json::value(text), nullptr, "a");
    return page_->engine.run("received");
  }

  std::shared_ptr<MemoryPlatform> memory_ = std::make_shared<MemoryPlatform>();
  std::shared_ptr<EnginePage> page_ = std::make_shared<EnginePage>();
  std::shared_ptr<ZOVKPopupWebViewJavascriptBridgeBase> bridge_ =
      std::make_shared<ZOVKPopupWebViewJavascriptBridgeBase>(memory_->shared());
};

// Surrogates, U+D800 to U+DFFF, are not characters and cannot occur in UTF-8.
TEST_F(CommandText, CarriesEveryCharacterOfThePlaneThatScriptsAreWrittenIn) {
  for (char32_t character = 0; character <= 0xFFFF; ++character) {
    if (character == 0xD800) character = 0xE000;
    const std::string text = utf8(character);
    ASSERT_EQ(arrived(text), text) << "U+" << std::hex << static_cast<unsigned>(character);
  }
}

TEST_F(CommandText, CarriesCharactersOfTheOtherPlanes) {
  for (char32_t character = 0x10000; character <= 0x10FFFF; character += 0x3FD) {
    const std::string text = utf8(character);
    ASSERT_EQ(arrived(text), text) << "U+" << std::hex << static_cast<unsigned>(character);
  }
  EXPECT_EQ(arrived(utf8(0x10FFFF)), utf8(0x10FFFF));
}

TEST_F(CommandText, CarriesTextsThatLookLikeEscapesOrTheEndOfTheScript) {
  for (const std::string text : {"\\", "\\\\", "\\'", "\\n", "\\u0041", "');alert('x", "</script>",
                                 "'\\\n\u2028", "%@", "\"}');//", "\r\n\f\b\t\v", "${x}`"}) {
    EXPECT_EQ(arrived(text), text);
  }
}

TEST_F(CommandText, CarriesAllCharactersInOneText) {
  std::string all;
  for (char32_t character = 0; character < 0xD800; ++character) all += utf8(character);
  EXPECT_EQ(arrived(all), all);
}

TEST_F(CommandText, KeepsNumbersExact) {
  for (const double number : {0.1, 1e300, 5e-324, -1.7976931348623157e308, 9007199254740991.0}) {
    bridge_->sendData(number, nullptr, "a");
    EXPECT_EQ(std::strtod(page_->engine.run("received").c_str(), nullptr), number);
  }
}

}  // namespace
}  // namespace zovk
