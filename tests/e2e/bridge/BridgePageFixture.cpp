#include "e2e/bridge/BridgePageFixture.h"

#include <boost/json/serialize.hpp>

namespace zovk {
namespace {

constexpr const char* kAsking = R"page(<!doctype html><meta charset="utf-8"><title>Page</title>
<body>
<script>
function askForBridge(address) {
  const frame = document.createElement('iframe');
  frame.style.display = 'none';
  frame.src = address || 'https://__bridge_loaded__';
  document.documentElement.appendChild(frame);
}
function withBridge(use) {
  if (window.WebViewJavascriptBridge) return use(window.WebViewJavascriptBridge);
  if (window.WVJBCallbacks) return window.WVJBCallbacks.push(use);
  window.WVJBCallbacks = [use];
  askForBridge();
}
)page";

// Pages give way to other programs: on a busy machine they take their time.
constexpr std::chrono::seconds kBound{60};

bool isBridgeLine(const std::string& line) {
  return line.starts_with("WebViewJavascriptBridge:") || line.starts_with("WVJB");
}

}  // namespace

std::string textOf(const std::optional<boost::json::value>& value) {
  if (!value) return "nothing";
  if (const auto* text = value->if_string()) return std::string(*text);
  return boost::json::serialize(*value);
}

std::string BridgePageFixture::page(const std::string& script) {
  return kAsking + script + "\n</script>";
}

std::string BridgePageFixture::bridgePage(const std::string& script) {
  return page("withBridge(bridge => {\n" + script + "\n});");
}

void BridgePageFixture::openAddress(const std::string& address) {
  windowSettings_.address = address;
  const auto changed = windowSettings_.pageChanged;
  windowSettings_.pageChanged = [this, changed] {
    ++pagesSeen_;
    if (changed) changed();
  };
  window_ = ZOVKPopupWebWindow::open(windowSettings_);
  ASSERT_NE(window_, nullptr) << allLines();
  bridge().registerHandler(
      "tell", [this](const Value& data, const Respond&) { told_.push_back(textOf(data)); });
  bridge().registerHandler("double", [](const Value& data, const Respond& respond) {
    respond(boost::json::value(textOf(data) + textOf(data)));
  });
}

void BridgePageFixture::awaitTold(std::size_t count) {
  pumpUntil([&] { return told_.size() >= count; }, std::to_string(count) + " texts of the page",
            kBound);
}

boost::json::value BridgePageFixture::evaluate(const std::string& script) {
  std::optional<boost::json::value> result;
  window_->evaluate(script, [&result](const ScriptResult& found) {
    result = found.error ? boost::json::value("ERROR " + *found.error) : *found.value;
  });
  pumpUntil([&] { return result.has_value(); }, "the result of " + script, kBound);
  return result.value_or("nothing");
}

void BridgePageFixture::awaitTrue(const std::string& condition) {
  const auto end = std::chrono::steady_clock::now() + kBound;
  while (evaluate(condition) != boost::json::value(true)) {
    ASSERT_LT(std::chrono::steady_clock::now(), end) << "waited in vain for " << condition;
  }
}

void BridgePageFixture::awaitPages(int count) {
  pumpUntil([&] { return pagesSeen_ >= count; }, std::to_string(count) + " pages", kBound);
}

std::vector<std::string> BridgePageFixture::bridgeLines() {
  std::vector<std::string> found = lines();
  std::erase_if(found, [](const std::string& line) { return !isBridgeLine(line); });
  return found;
}

void BridgePageFixture::awaitBridgeLines(std::size_t count) {
  pumpUntil([&] { return bridgeLines().size() >= count; }, std::to_string(count) + " bridge lines",
            kBound);
}

}  // namespace zovk
