#include "zovkpopup/BridgeBase.h"

#include <string_view>
#include <utility>

#include "bridge/BridgeInbox.h"
#include "bridge/QueueSignal.h"
#include "bridge/ZOVKPopupWebViewJavascriptBridge_js.h"
#include "logging/ZPLogger.h"
#include "text/JsonText.h"
#include "text/LowerCase.h"
#include "text/UrlText.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {
namespace {

/// Few enough for a fraction of a millisecond, beside what the game's handlers take.
constexpr int kMessagesInATurn = 16;

template <class Map>
std::vector<std::string> keysOf(const Map& map) {
  std::vector<std::string> keys;
  keys.reserve(map.size());
  for (const auto& [key, value] : map) keys.push_back(key);
  return keys;
}

/// Takes a member out of its message: it may be long, and this is the game's thread.
std::optional<boost::json::value> takeMember(boost::json::object& message, std::string_view name) {
  auto* const member = message.if_contains(name);
  return member == nullptr ? std::nullopt : std::optional(std::move(*member));
}

std::optional<std::string> textOf(const boost::json::value* value) {
  if (value == nullptr || !value->is_string()) return std::nullopt;
  return std::string(value->get_string());
}

bool hasHost(const std::string& url, std::string_view host) {
  return lowerCase(partsOfUrl(url).host) == host;
}

}  // namespace

void ZOVKPopupWebViewJavascriptBridgeBase::enableLogging() {
  logging_ = true;
}

void ZOVKPopupWebViewJavascriptBridgeBase::setLogMaxLength(std::int32_t length) {
  logMaxLength_ = length;
}

ZOVKPopupWebViewJavascriptBridgeBase::ZOVKPopupWebViewJavascriptBridgeBase(
    std::shared_ptr<Platform> platform)
    : platform_(std::move(platform)), inbox_(std::make_unique<BridgeInbox>(platform_->clock)) {}

ZOVKPopupWebViewJavascriptBridgeBase::~ZOVKPopupWebViewJavascriptBridgeBase() = default;

void ZOVKPopupWebViewJavascriptBridgeBase::setDelegate(
    std::weak_ptr<ZOVKPopupWebViewJavascriptBridgeBaseDelegate> delegate) {
  const LockGuard lock(mutex_);
  delegate_ = std::move(delegate);
}

// A replaced or removed handler may own things that call back when they are destroyed, so it is
// destroyed without the lock.

void ZOVKPopupWebViewJavascriptBridgeBase::setHandler(const std::string& handlerName,
                                                      Handler handler) {
  const LockGuard lock(mutex_);
  messageHandlers_[handlerName].swap(handler);  // arguments end after the lock
}

void ZOVKPopupWebViewJavascriptBridgeBase::removeHandler(const std::string& handlerName) {
  decltype(messageHandlers_)::node_type removed;
  const LockGuard lock(mutex_);
  removed = messageHandlers_.extract(handlerName);
}

void ZOVKPopupWebViewJavascriptBridgeBase::reset() {
  inbox_->logHeldMistakes();
  decltype(responseCallbacks_) dropped;
  const LockGuard lock(mutex_);
  if (closed_) return;
  startupMessageQueue_.emplace();
  dropped.swap(responseCallbacks_);
  uniqueId_ = 0;
}

void ZOVKPopupWebViewJavascriptBridgeBase::close() {
  inbox_->logHeldMistakes();
  decltype(responseCallbacks_) callbacks;
  decltype(messageHandlers_) handlers;
  const LockGuard lock(mutex_);
  closed_ = true;
  delegate_.reset();
  startupMessageQueue_.reset();
  callbacks.swap(responseCallbacks_);
  handlers.swap(messageHandlers_);
}

bool ZOVKPopupWebViewJavascriptBridgeBase::isClosed() const {
  const LockGuard lock(mutex_);
  return closed_;
}

void ZOVKPopupWebViewJavascriptBridgeBase::sendData(std::optional<boost::json::value> data,
                                                    ResponseCallback responseCallback,
                                                    const std::optional<std::string>& handlerName) {
  Message message;
  if (data) message["data"] = std::move(*data);
  if (responseCallback) message["callbackId"] = keepCallback(std::move(responseCallback));
  if (handlerName) message["handlerName"] = *handlerName;
  _queueMessage(std::move(message));
}

std::string ZOVKPopupWebViewJavascriptBridgeBase::keepCallback(ResponseCallback callback) {
  auto kept = std::make_shared<const ResponseCallback>(std::move(callback));
  const LockGuard lock(mutex_);
  std::string callbackId = "objc_cb_" + std::to_string(++uniqueId_);
  if (!closed_) responseCallbacks_[callbackId] = std::move(kept);
  return callbackId;
}

void ZOVKPopupWebViewJavascriptBridgeBase::disableJavscriptAlertBoxSafetyTimeout() {
  sendData(std::nullopt, nullptr, "_disableJavascriptAlertBoxSafetyTimeout");
}

void ZOVKPopupWebViewJavascriptBridgeBase::_queueMessage(Message message) {
  {
    const LockGuard lock(mutex_);
    if (startupMessageQueue_) {
      startupMessageQueue_->push_back(std::move(message));
      return;
    }
  }
  _dispatchMessage(std::move(message));
}

void ZOVKPopupWebViewJavascriptBridgeBase::_dispatchMessage(Message message) {
  const boost::json::value record(std::move(message));
  const auto text = _serializeMessage(record, false);
  if (!text) {
    return ZPLogger::writeDirectly(
        "WebViewJavascriptBridge: WARNING: A message is not sent, JSON cannot hold it");
  }
  _log("SEND", *text);
  const std::string command =
      "WebViewJavascriptBridge._handleMessageFromObjC('" + escapedForScript(*text) + "');";
  platform_->mainQueue.sync([&] { _evaluateJavascript(command); });
}

void ZOVKPopupWebViewJavascriptBridgeBase::_evaluateJavascript(
    const std::string& javascriptCommand) {
  std::shared_ptr<ZOVKPopupWebViewJavascriptBridgeBaseDelegate> delegate;
  {
    const LockGuard lock(mutex_);
    delegate = delegate_.lock();
  }
  if (delegate) delegate->_evaluateJavascript(javascriptCommand);
}

// Held messages leave in one turn of the main thread, so that what other threads send meanwhile
// comes after them.

void ZOVKPopupWebViewJavascriptBridgeBase::injectJavascriptFile() {
  platform_->mainQueue.sync([keepAlive = shared_from_this()] {
    keepAlive->_evaluateJavascript(ZOVKPopupWebViewJavascriptBridge_js());
    keepAlive->releaseHeldMessages();
  });
}

void ZOVKPopupWebViewJavascriptBridgeBase::setupMessageQueue() {
  platform_->mainQueue.sync([keepAlive = shared_from_this()] { keepAlive->releaseHeldMessages(); });
}

void ZOVKPopupWebViewJavascriptBridgeBase::releaseHeldMessages() {
  std::optional<std::vector<Message>> held;
  {
    const LockGuard lock(mutex_);
    held.swap(startupMessageQueue_);
  }
  if (!held) return;
  for (Message& message : *held) _dispatchMessage(std::move(message));
}

void ZOVKPopupWebViewJavascriptBridgeBase::flushMessageQueue(
    const std::optional<std::string>& messageQueueString) {
  flushFetchedQueue(boost::json::string(messageQueueString.value_or("")));
}

void ZOVKPopupWebViewJavascriptBridgeBase::flushFetchedQueue(
    boost::json::string messageQueueString) {
  if (isClosed()) return;
  if (messageQueueString.empty() || !inbox_->mayTake(messageQueueString.size())) {
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
  if (!queue.tooMuch().empty()) {
    ZPLogger::writeDirectly("WebViewJavascriptBridge: WARNING: A message queue holds " +
                            std::string(queue.tooMuch()) + ", it is left out");
    return false;
  }
  auto element = queue.take();
  if (element) receive(std::move(*element));
  return element.has_value();
}

void ZOVKPopupWebViewJavascriptBridgeBase::receive(boost::json::value element) {
  Message* const message = element.if_object();
  if (message == nullptr) {
    return inbox_->logMistake("WebViewJavascriptBridge: WARNING: Invalid " +
                                  std::string(jsonKind(element)) + " received: ",
                              element);
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
    return inbox_->logMistake("WebViewJavascriptBridge: WARNING: Nobody waits for the response: ",
                              responseId);
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
    return inbox_->logMistake("WVJBNoHandlerException, No handler for message from JS: ",
                              boost::json::value(std::move(message)));
  }
  const auto data = takeMember(message, "data");
  handler(data, responderTo(takeMember(message, "callbackId")));
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

std::int64_t ZOVKPopupWebViewJavascriptBridgeBase::uniqueId() const {
  const LockGuard lock(mutex_);
  return uniqueId_;
}

std::optional<std::vector<ZOVKPopupWebViewJavascriptBridgeBase::Message>>
ZOVKPopupWebViewJavascriptBridgeBase::startupMessageQueue() const {
  const LockGuard lock(mutex_);
  return startupMessageQueue_;
}

std::vector<std::string> ZOVKPopupWebViewJavascriptBridgeBase::responseCallbacks() const {
  const LockGuard lock(mutex_);
  return keysOf(responseCallbacks_);
}

std::vector<std::string> ZOVKPopupWebViewJavascriptBridgeBase::messageHandlers() const {
  const LockGuard lock(mutex_);
  return keysOf(messageHandlers_);
}

}  // namespace zovk
