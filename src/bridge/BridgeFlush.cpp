// What a page has sent, taken apart and handed to handlers and waiting callbacks.
#include <utility>

#include <boost/json/array.hpp>

#include "bridge/BridgeText.h"
#include "bridge/ZOVKPopupWebViewJavascriptBridgeBase.h"
#include "logging/ZPLogger.h"

namespace zovk {
namespace {

using Message = ZOVKPopupWebViewJavascriptBridgeBase::Message;

std::optional<boost::json::value> memberOf(const Message& message, std::string_view name) {
  const auto* member = message.if_contains(name);
  return member == nullptr ? std::nullopt : std::optional(*member);
}

std::optional<std::string> textOf(const boost::json::value* value) {
  if (value == nullptr || !value->is_string()) return std::nullopt;
  return std::string(value->get_string());
}

std::string textForLog(const boost::json::value& value) {
  if (const auto* text = value.if_string()) return std::string(*text);
  return jsonText(value, false).value_or("(null)");
}

void warnOfInvalid(const boost::json::value& element) {
  ZPLogger::writeDirectly("WebViewJavascriptBridge: WARNING: Invalid " +
                          std::string(jsonKind(element)) + " received: " + textForLog(element));
}

}  // namespace

void ZOVKPopupWebViewJavascriptBridgeBase::flushMessageQueue(
    const std::optional<std::string>& messageQueueString) {
  if (isClosed()) return;
  if (!messageQueueString || messageQueueString->empty()) {
    return ZPLogger::writeDirectly(
        "WebViewJavascriptBridge: WARNING: ObjC got nil while fetching the message queue JSON from "
        "webview. This can happen if the WebViewJavascriptBridge JS is not currently present in "
        "the webview, e.g if the webview just loaded a new page.");
  }
  const auto keepAlive = shared_from_this();  // a handler may let the bridge go
  const auto messages = _deserializeMessageJSON(*messageQueueString);
  if (!messages) return;
  if (const auto* array = messages->if_array()) {
    for (const boost::json::value& element : *array) {
      receive(element);
      if (isClosed()) return;
    }
  } else if (const auto* object = messages->if_object()) {
    for (const auto& member : *object) warnOfInvalid(boost::json::value(member.key()));
  }
}

void ZOVKPopupWebViewJavascriptBridgeBase::receive(const boost::json::value& element) {
  const Message* message = element.if_object();
  if (message == nullptr) return warnOfInvalid(element);
  _log("RCVD", element);
  // Whatever the identifier is: a page that meant to answer is not to call a handler.
  if (const auto* responseId = message->if_contains("responseId")) {
    receiveResponse(*responseId, *message);
  } else {
    receiveRequest(*message);
  }
}

void ZOVKPopupWebViewJavascriptBridgeBase::receiveResponse(const boost::json::value& responseId,
                                                           const Message& message) {
  const auto callbackId = textOf(&responseId);
  const WaitingCallback callback = callbackId ? waitingCallback(*callbackId) : nullptr;
  if (callback == nullptr) {
    return ZPLogger::writeDirectly(
        "WebViewJavascriptBridge: WARNING: Nobody waits for the response: " +
        textForLog(responseId));
  }
  (*callback)(memberOf(message, "responseData"));
  const LockGuard lock(mutex_);
  // After a reset within the callback, its identifier may already be another one's.
  const auto found = responseCallbacks_.find(*callbackId);
  if (found != responseCallbacks_.end() && found->second == callback) {
    responseCallbacks_.erase(found);
  }
}

void ZOVKPopupWebViewJavascriptBridgeBase::receiveRequest(const Message& message) {
  const Handler handler = handlerNamed(textOf(message.if_contains("handlerName")));
  if (!handler) {
    return ZPLogger::writeDirectly("WVJBNoHandlerException, No handler for message from JS: " +
                                   textForLog(boost::json::value(message)));
  }
  handler(memberOf(message, "data"), responderTo(memberOf(message, "callbackId")));
}

ZOVKPopupWebViewJavascriptBridgeBase::WaitingCallback
ZOVKPopupWebViewJavascriptBridgeBase::waitingCallback(const std::string& callbackId) const {
  const LockGuard lock(mutex_);
  const auto found = responseCallbacks_.find(callbackId);
  return found == responseCallbacks_.end() ? nullptr : found->second;
}

ZOVKPopupWebViewJavascriptBridgeBase::Handler ZOVKPopupWebViewJavascriptBridgeBase::handlerNamed(
    const std::optional<std::string>& handlerName) const {
  if (!handlerName) return nullptr;
  const LockGuard lock(mutex_);
  const auto found = messageHandlers_.find(*handlerName);
  return found == messageHandlers_.end() ? nullptr : found->second;
}

ZOVKPopupWebViewJavascriptBridgeBase::ResponseCallback
ZOVKPopupWebViewJavascriptBridgeBase::responderTo(
    const std::optional<boost::json::value>& callbackId) {
  if (!callbackId) return [](const std::optional<boost::json::value>&) {};
  return [bridge = shared_from_this(),
          callbackId = *callbackId](const std::optional<boost::json::value>& responseData) {
    Message message;
    message["responseId"] = callbackId;
    message["responseData"] = responseData.value_or(nullptr);
    bridge->_queueMessage(std::move(message));
  };
}

}  // namespace zovk
