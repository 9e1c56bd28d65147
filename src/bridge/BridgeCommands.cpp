// The fixed texts of the bridge: commands to the page, addresses by which the page calls, and the
// traffic in the log.
#include "bridge/QueueSignal.h"
#include "logging/ZPLogger.h"
#include "text/JsonText.h"
#include "text/LowerCase.h"
#include "text/UrlText.h"
#include "zovkpopup/BridgeBase.h"

namespace zovk {
namespace {

bool hasHost(const std::string& url, std::string_view host) {
  return lowerCase(partsOfUrl(url).host) == host;
}

}  // namespace

std::string ZOVKPopupWebViewJavascriptBridgeBase::webViewJavascriptCheckCommand() const {
  return "typeof WebViewJavascriptBridge == 'object';";
}

std::string ZOVKPopupWebViewJavascriptBridgeBase::webViewJavascriptFetchQueyCommand() const {
  return "WebViewJavascriptBridge._fetchQueue();";
}

bool ZOVKPopupWebViewJavascriptBridgeBase::isWebViewJavascriptBridgeURL(
    const std::string& url) const {
  return isBridgeLoadedURL(url) || isQueueMessageURL(url);
}

bool ZOVKPopupWebViewJavascriptBridgeBase::isSchemeMatch(const std::string& url) const {
  const std::string scheme = lowerCase(partsOfUrl(url).scheme);
  return scheme == "https" || scheme == "wvjbscheme";
}

bool ZOVKPopupWebViewJavascriptBridgeBase::isQueueMessageURL(const std::string& url) const {
  return isSchemeMatch(url) && hasHost(url, kQueueSignalHost);
}

bool ZOVKPopupWebViewJavascriptBridgeBase::isBridgeLoadedURL(const std::string& url) const {
  return isSchemeMatch(url) && hasHost(url, "__bridge_loaded__");
}

void ZOVKPopupWebViewJavascriptBridgeBase::logUnkownMessage(const std::string& url) const {
  ZPLogger::writeDirectly(
      "WebViewJavascriptBridge: WARNING: Received unknown WebViewJavascriptBridge command " + url);
}

std::optional<std::string> ZOVKPopupWebViewJavascriptBridgeBase::_serializeMessage(
    const boost::json::value& message, bool pretty) const {
  return jsonText(message, pretty);
}

std::optional<boost::json::value> ZOVKPopupWebViewJavascriptBridgeBase::_deserializeMessageJSON(
    std::string_view messageJSON) const {
  return jsonValue(messageJSON);
}

void ZOVKPopupWebViewJavascriptBridgeBase::_log(std::string_view action,
                                                const boost::json::value& json) const {
  if (!logging_) return;
  if (const auto* text = json.if_string()) return _log(action, std::string(*text));
  _log(action, _serializeMessage(json, true).value_or("(null)"));
}

void ZOVKPopupWebViewJavascriptBridgeBase::_log(std::string_view action,
                                                const std::string& json) const {
  if (!logging_) return;
  const std::int32_t longest = logMaxLength_;
  const std::size_t end =
      longest < 0 ? json.size() : endOfCharacters(json, static_cast<std::size_t>(longest));
  ZPLogger::writeDirectly("WVJB " + std::string(action) + ": " + json.substr(0, end) +
                          (end < json.size() ? " [...]" : ""));
}

}  // namespace zovk
