#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <boost/json/object.hpp>
#include <boost/json/string.hpp>
#include <boost/json/value.hpp>
#include <zovkpopup/Export.h>
#include <zovkpopup/ThreadSafety.h>

namespace zovk {

class BridgeInbox;
struct Platform;
class ReceivedQueue;
class WebViewDelegate;

/// Runs scripts in the page for the bridge. Main thread only.
class ZOVKPopupWebViewJavascriptBridgeBaseDelegate {
 public:
  virtual ~ZOVKPopupWebViewJavascriptBridgeBaseDelegate() = default;
  /// Runs a script. The bridge ignores the result.
  virtual std::string _evaluateJavascript(const std::string& javascriptCommand) = 0;
};

/// The half of the message bridge that does not depend on a web view: the handlers that a page may
/// call, the callbacks that wait for the page's responses, and the messages themselves.
///
/// Hold it in a shared pointer. Every response callback that it passes to a handler keeps it alive.
/// Handlers and callbacks are copied before a call, and called without a lock. So they may send,
/// register, remove, reset or release the bridge. They are called on the thread that flushes, which
/// is the main thread. Everything else may be called from any thread. A message from a thread other
/// than the main thread waits until the main thread has passed it to the page; after the main queue
/// has shut down it is dropped.
///
/// No call fails: a page's mistake is skipped with one log line, and at most 20 such lines a second
/// are written. An absent value is not the same as JSON's null. A handler name that is not a text
/// counts as absent. An identifier counts if it is present, even if it is empty or not a text: a
/// message with a "responseId" is a response, and one with a "callbackId" is answered with that
/// same value. A response that nobody waits for, an empty handler, and a message that JSON cannot
/// hold are logged and dropped.
class ZOVKPOPUP_API ZOVKPopupWebViewJavascriptBridgeBase
    : public std::enable_shared_from_this<ZOVKPopupWebViewJavascriptBridgeBase> {
 public:
  using Message = boost::json::object;
  using ResponseCallback =
      std::function<void(const std::optional<boost::json::value>& responseData)>;
  /// Handles a call from the page. The response callback is never empty, may be kept, and may be
  /// called from any thread. Each call sends a response if the page wants one.
  using Handler = std::function<void(const std::optional<boost::json::value>& data,
                                     const ResponseCallback& responseCallback)>;

  /// Writes the traffic of all bridges to the log from now on.
  static void enableLogging();
  /// Sets how many characters of a message are logged. A negative number means no limit.
  static void setLogMaxLength(std::int32_t length);

  explicit ZOVKPopupWebViewJavascriptBridgeBase(std::shared_ptr<Platform> platform);
  ~ZOVKPopupWebViewJavascriptBridgeBase();
  ZOVKPopupWebViewJavascriptBridgeBase(const ZOVKPopupWebViewJavascriptBridgeBase&) = delete;
  ZOVKPopupWebViewJavascriptBridgeBase& operator=(const ZOVKPopupWebViewJavascriptBridgeBase&) =
      delete;

  void setDelegate(std::weak_ptr<ZOVKPopupWebViewJavascriptBridgeBaseDelegate> delegate);
  void setHandler(const std::string& handlerName, Handler handler);
  void removeHandler(const std::string& handlerName);
  /// Drops waiting callbacks and messages, restarts the count of identifiers, and holds messages
  /// back until the next injection. Handlers stay.
  void reset();
  /// Releases everything it holds. Call it when no page can reach the bridge any more. Messages
  /// sent after that are dropped, and messages of the page are ignored. It frees callbacks that
  /// hold a response callback and, through that, the bridge.
  void close();
  bool isClosed() const;

  void sendData(std::optional<boost::json::value> data, ResponseCallback responseCallback,
                const std::optional<std::string>& handlerName);
  /// Makes the page handle messages at once, so that none waits for a timer of the page.
  void disableJavscriptAlertBoxSafetyTimeout();
  /// Handles the messages that the page has sent: a JSON array. A queue of more than 32 KiB, and
  /// everything that arrives while one is being read, is handled in pieces, in order, in turns of
  /// the main queue.
  void flushMessageQueue(const std::optional<std::string>& messageQueueString);
  /// Handles the messages without copying the text. An empty text counts as missing.
  void flushFetchedQueue(boost::json::string messageQueueString);

  /// Runs the page's half of the bridge in the page, then sends the messages that were held back.
  void injectJavascriptFile();
  /// Sends the messages that were held back. From now on messages are sent at once.
  void setupMessageQueue();

  bool isWebViewJavascriptBridgeURL(const std::string& url) const;
  bool isSchemeMatch(const std::string& url) const;
  bool isQueueMessageURL(const std::string& url) const;
  bool isBridgeLoadedURL(const std::string& url) const;
  void logUnkownMessage(const std::string& url) const;

  std::string webViewJavascriptCheckCommand() const;
  std::string webViewJavascriptFetchQueyCommand() const;

  void _evaluateJavascript(const std::string& javascriptCommand);
  void _queueMessage(Message message);
  void _dispatchMessage(Message message);
  /// Returns nothing if JSON cannot hold the value.
  std::optional<std::string> _serializeMessage(const boost::json::value& message,
                                               bool pretty) const;
  /// Returns nothing if the text does not parse.
  std::optional<boost::json::value> _deserializeMessageJSON(std::string_view messageJSON) const;
  void _log(std::string_view action, const std::string& json) const;
  void _log(std::string_view action, const boost::json::value& json) const;

  /// Returns the number of the last callback identifier.
  std::int64_t uniqueId() const;
  /// Returns the messages that are held back, or nothing once messages are sent at once.
  std::optional<std::vector<Message>> startupMessageQueue() const;
  /// Returns the identifiers of callbacks that wait for a response.
  std::vector<std::string> responseCallbacks() const;
  /// Returns the names of the handlers.
  std::vector<std::string> messageHandlers() const;

  /// Free for the game's use; the bridge ignores both.
  std::weak_ptr<WebViewDelegate> webViewDelegate;
  Handler messageHandler;

 private:
  // Shared, so that a callback can be distinguished from a later one under the same name.
  using WaitingCallback = std::shared_ptr<const ResponseCallback>;

  std::string keepCallback(ResponseCallback callback);
  WaitingCallback waitingCallback(const std::string& callbackId) const;
  Handler handlerNamed(const std::optional<std::string>& handlerName) const;
  void releaseHeldMessages();
  void goOnLater();
  void goOn();
  bool receiveSome(ReceivedQueue& queue);
  bool receiveNext(ReceivedQueue& queue);
  void receive(boost::json::value element);
  void receiveResponse(const boost::json::value& responseId, Message& message);
  void receiveRequest(Message& message);
  ResponseCallback responderTo(const std::optional<boost::json::value>& callbackId);

  inline static std::atomic<bool> logging_{false};
  inline static std::atomic<std::int32_t> logMaxLength_{500};

  const std::shared_ptr<Platform> platform_;
  const std::unique_ptr<BridgeInbox> inbox_;
  mutable Mutex mutex_;
  bool closed_ ZOVK_GUARDED_BY(mutex_) = false;
  std::int64_t uniqueId_ ZOVK_GUARDED_BY(mutex_) = 0;
  std::weak_ptr<ZOVKPopupWebViewJavascriptBridgeBaseDelegate> delegate_ ZOVK_GUARDED_BY(mutex_);
  std::optional<std::vector<Message>> startupMessageQueue_ ZOVK_GUARDED_BY(mutex_) =
      std::vector<Message>();
  std::map<std::string, WaitingCallback> responseCallbacks_ ZOVK_GUARDED_BY(mutex_);
  std::map<std::string, Handler> messageHandlers_ ZOVK_GUARDED_BY(mutex_);
};

}  // namespace zovk
