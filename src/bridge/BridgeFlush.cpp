// Parses the messages of a page and passes them to handlers and waiting callbacks.
#include <string_view>
#include <utility>

#include "bridge/BridgeInbox.h"
#include "logging/ZPLogger.h"
#include "text/JsonText.h"
#include "zovkpopup/BridgeBase.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {
namespace {

using Message = ZOVKPopupWebViewJavascriptBridgeBase::Message;

/// Few enough for a fraction of a millisecond, beside what the game's handlers take.
constexpr int kMessagesInATurn = 16;
constexpr std::size_t kMostWaitingText = std::size_t{128} * 1024 * 1024;
constexpr std::size_t kLongestMistake = std::size_t{16} * 1024;

/// Takes a member out of its message: it may be long, and this is the game's thread.
std::optional<boost::json::value> takeMember(Message& message, std::string_view name) {
  auto* const member = message.if_contains(name);
  return member == nullptr ? std::nullopt : std::optional(std::move(*member));
}

std::optional<std::string> textOf(const boost::json::value* value) {
  if (value == nullptr || !value->is_string()) return std::nullopt;
  return std::string(value->get_string());
}

/// Returns the part of a wrong value that people care to read.
std::string textForLog(const boost::json::value& value) {
  if (const auto* text = value.if_string())
    return shortText(std::string_view(*text), kLongestMistake);
  return shortJsonText(value, kLongestMistake).value_or("(null)");
}

}  // namespace

void ZOVKPopupWebViewJavascriptBridgeBase::flushMessageQueue(
    const std::optional<std::string>& messageQueueString) {
  flushFetchedQueue(boost::json::string(messageQueueString.value_or("")));
}

void ZOVKPopupWebViewJavascriptBridgeBase::flushFetchedQueue(
    boost::json::string messageQueueString) {
  if (isClosed()) return;
  if (messageQueueString.empty() || !mayWait(messageQueueString.size())) {
    return ZPLogger::writeDirectly(
        "WebViewJavascriptBridge: WARNING: ObjC got nil while fetching the message queue JSON from "
        "webview. This can happen if the WebViewJavascriptBridge JS is not currently present in "
        "the webview, e.g if the webview just loaded a new page.");
  }
  const auto keepAlive = shared_from_this();  // a handler may let the bridge go
  if (messageQueueString.size() <= kPieceOfQueue && inbox_->queues.empty()) {
    ReceivedQueue queue(std::move(messageQueueString));
    queue.readPiece();
    while (receiveNext(queue)) {
    }
    return;
  }
  inbox_->queues.emplace_back(std::move(messageQueueString));
  if (inbox_->queues.size() == 1) goOnLater();
}

// Queues that a page sends while a long one is read wait behind it.
bool ZOVKPopupWebViewJavascriptBridgeBase::mayWait(std::size_t size) const {
  std::size_t waiting = size;
  for (const ReceivedQueue& queue : inbox_->queues) waiting += queue.size();
  return inbox_->queues.empty() || waiting <= kMostWaitingText;
}

void ZOVKPopupWebViewJavascriptBridgeBase::goOnLater() {
  platform_->mainQueue.async([weak = weak_from_this()] {
    if (const auto bridge = weak.lock()) bridge->goOn();
  });
}

void ZOVKPopupWebViewJavascriptBridgeBase::goOn() {
  ReceivedQueue& queue = inbox_->queues.front();
  if (!queue.readPiece() && !receiveSome(queue)) inbox_->queues.pop_front();
  if (isClosed()) return inbox_->queues.clear();
  if (!inbox_->queues.empty()) goOnLater();
}

bool ZOVKPopupWebViewJavascriptBridgeBase::receiveSome(ReceivedQueue& queue) {
  for (int message = 0; message < kMessagesInATurn; ++message) {
    if (!receiveNext(queue)) return false;
  }
  return true;
}

bool ZOVKPopupWebViewJavascriptBridgeBase::receiveNext(ReceivedQueue& queue) {
  if (isClosed()) return false;
  if (queue.holdsTooMuch()) {
    ZPLogger::writeDirectly(
        "WebViewJavascriptBridge: WARNING: A message queue holds too many values, it is left out");
    return false;
  }
  auto element = queue.take();
  if (element) receive(std::move(*element));
  return element.has_value();
}

void ZOVKPopupWebViewJavascriptBridgeBase::receive(boost::json::value element) {
  Message* const message = element.if_object();
  if (message == nullptr) {
    return logMistake("WebViewJavascriptBridge: WARNING: Invalid " +
                      std::string(jsonKind(element)) + " received: " + textForLog(element));
  }
  _log("RCVD", element);
  // Whatever the identifier is: a page that meant to answer is not to call a handler.
  if (const auto* responseId = message->if_contains("responseId")) {
    receiveResponse(*responseId, *message);
  } else {
    receiveRequest(*message);
  }
}

void ZOVKPopupWebViewJavascriptBridgeBase::receiveResponse(const boost::json::value& responseId,
                                                           Message& message) {
  const auto callbackId = textOf(&responseId);
  const WaitingCallback callback = callbackId ? waitingCallback(*callbackId) : nullptr;
  if (callback == nullptr) {
    return logMistake("WebViewJavascriptBridge: WARNING: Nobody waits for the response: " +
                      textForLog(responseId));
  }
  (*callback)(takeMember(message, "responseData"));
  const LockGuard lock(mutex_);
  // After a reset within the callback, its identifier may already be another one's.
  const auto found = responseCallbacks_.find(*callbackId);
  if (found != responseCallbacks_.end() && found->second == callback) {
    responseCallbacks_.erase(found);
  }
}

void ZOVKPopupWebViewJavascriptBridgeBase::receiveRequest(Message& message) {
  const Handler handler = handlerNamed(textOf(message.if_contains("handlerName")));
  if (!handler) {
    return logMistake("WVJBNoHandlerException, No handler for message from JS: " +
                      textForLog(boost::json::value(std::move(message))));
  }
  const auto data = takeMember(message, "data");
  handler(data, responderTo(takeMember(message, "callbackId")));
}

// A page can make as many as it likes.
void ZOVKPopupWebViewJavascriptBridgeBase::logMistake(std::string line) {
  if (const auto written = inbox_->mistakes.line(std::move(line)))
    ZPLogger::writeDirectly(*written);
}

void ZOVKPopupWebViewJavascriptBridgeBase::logHeldMistakes() {
  if (const auto written = inbox_->mistakes.rest()) ZPLogger::writeDirectly(*written);
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
