#include "zovkpopup/BridgeBase.h"

#include <utility>

#include "bridge/BridgeInbox.h"
#include "bridge/ZOVKPopupWebViewJavascriptBridge_js.h"
#include "logging/ZPLogger.h"
#include "text/JsonText.h"
#include "zovkpopup/platform/Platform.h"

namespace zovk {
namespace {

// Enough to find a mistake by; a page can make as many as it likes.
constexpr std::size_t kMistakesASecond = 20;

template <class Map>
std::vector<std::string> keysOf(const Map& map) {
  std::vector<std::string> keys;
  keys.reserve(map.size());
  for (const auto& [key, value] : map) keys.push_back(key);
  return keys;
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
    : platform_(std::move(platform)),
      inbox_(new BridgeInbox{
          {}, LineLimit([this] { return platform_->clock.systemUptime(); }, kMistakesASecond)}) {}

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
  logHeldMistakes();
  decltype(responseCallbacks_) dropped;
  const LockGuard lock(mutex_);
  if (closed_) return;
  startupMessageQueue_.emplace();
  dropped.swap(responseCallbacks_);
  uniqueId_ = 0;
}

void ZOVKPopupWebViewJavascriptBridgeBase::close() {
  logHeldMistakes();
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
