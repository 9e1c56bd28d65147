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

struct BridgeInbox;
struct Platform;
class ReceivedQueue;
class WebViewDelegate;

/// Runs scripts in the page for the bridge. Main thread only.
class ZOVKPopupWebViewJavascriptBridgeBaseDelegate {
 public:
  virtual ~ZOVKPopupWebViewJavascriptBridgeBaseDelegate() = default;
  /// The bridge does not look at the result.
  virtual std::string _evaluateJavascript(const std::string& javascriptCommand) = 0;
};

/// The half of the message bridge that knows no web view: handlers that a page may call, callbacks
/// that wait for the page's responses, and the messages themselves.
///
/// It lives in a shared pointer, and every response callback that it hands to a handler keeps it
/// alive. Handlers and callbacks are held as copies and called without a lock, so they may send,
/// register, remove, reset or let the bridge go; they are called on the thread that flushes, the
/// main thread. All else may be called from any thread. A message that another thread sends waits
/// until the main thread has handed it to the page; once the main queue is shut down it is dropped.
///
/// Nothing fails: what a page sends amiss is skipped with one line in the log, of which at most 20
/// a second are written. A value that is absent is none, which is not the same as JSON's null. A
/// handler's name that is no text counts as absent. An identifier that is there counts, empty or no
/// text as it may be: a message with a "responseId" is a response, and one with a "callbackId" is
/// answered under that very value. A response that nobody waits for, a handler that is empty and a
/// message that JSON cannot hold are reported in the log and dropped.
class ZOVKPOPUP_API ZOVKPopupWebViewJavascriptBridgeBase
    : public std::enable_shared_from_this<ZOVKPopupWebViewJavascriptBridgeBase> {
 public:
  using Message = boost::json::object;
  using ResponseCallback =
      std::function<void(const std::optional<boost::json::value>& responseData)>;
  /// The response callback is never empty, may be kept, and may be called from any thread; each
  /// call sends a response when the page wants one.
  using Handler = std::function<void(const std::optional<boost::json::value>& data,
                                     const ResponseCallback& responseCallback)>;

  /// Writes the traffic of all bridges to the log, from now on.
  static void enableLogging();
  /// How many characters of a message are logged; fewer than 0 stands for all of them.
  static void setLogMaxLength(std::int32_t length);

  explicit ZOVKPopupWebViewJavascriptBridgeBase(std::shared_ptr<Platform> platform);
  ~ZOVKPopupWebViewJavascriptBridgeBase();
  ZOVKPopupWebViewJavascriptBridgeBase(const ZOVKPopupWebViewJavascriptBridgeBase&) = delete;
  ZOVKPopupWebViewJavascriptBridgeBase& operator=(const ZOVKPopupWebViewJavascriptBridgeBase&) =
      delete;

  void setDelegate(std::weak_ptr<ZOVKPopupWebViewJavascriptBridgeBaseDelegate> delegate);
  void setHandler(const std::string& handlerName, Handler handler);
  void removeHandler(const std::string& handlerName);
  /// Forgets waiting callbacks and messages, starts counting anew, and holds messages back until
  /// the next injection. Handlers stay.
  void reset();
  /// Lets go of all it holds, for when no page can reach it any more: what is sent from now on goes
  /// nowhere, and what the page has sent is not looked at. Callbacks that hold a response callback,
  /// and so the bridge, are freed by this.
  void close();
  bool isClosed() const;

  void sendData(std::optional<boost::json::value> data, ResponseCallback responseCallback,
                const std::optional<std::string>& handlerName);
  /// Tells the page to handle messages at once, so that none waits for a timer of the page.
  void disableJavscriptAlertBoxSafetyTimeout();
  /// Handles what the page has sent: a JSON array of messages. A queue of more than 32 KiB, and
  /// what comes while one is read, is handled piece by piece in turns of the main queue, in order.
  void flushMessageQueue(const std::optional<std::string>& messageQueueString);
  /// The same without copying the text; an empty one counts as missing.
  void flushFetchedQueue(boost::json::string messageQueueString);

  /// Runs the page's half of the bridge in the page, then sends what was held back.
  void injectJavascriptFile();
  /// Sends what was held back; from now on messages are sent at once.
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
  /// Absent when JSON cannot hold the value.
  std::optional<std::string> _serializeMessage(const boost::json::value& message,
                                               bool pretty) const;
  /// Absent when the text does not parse.
  std::optional<boost::json::value> _deserializeMessageJSON(std::string_view messageJSON) const;
  void _log(std::string_view action, const std::string& json) const;
  void _log(std::string_view action, const boost::json::value& json) const;

  /// The number of the callback identifier that was given out last.
  std::int64_t uniqueId() const;
  /// What is held back; absent once messages are sent at once.
  std::optional<std::vector<Message>> startupMessageQueue() const;
  /// The identifiers of callbacks that wait for a response.
  std::vector<std::string> responseCallbacks() const;
  /// The names of the handlers.
  std::vector<std::string> messageHandlers() const;

  /// For whoever sets them; the bridge looks at neither.
  std::weak_ptr<WebViewDelegate> webViewDelegate;
  Handler messageHandler;

 private:
  // Shared, so that the one that was called can be told from another under the same name.
  using WaitingCallback = std::shared_ptr<const ResponseCallback>;

  std::string keepCallback(ResponseCallback callback);
  WaitingCallback waitingCallback(const std::string& callbackId) const;
  Handler handlerNamed(const std::optional<std::string>& handlerName) const;
  void releaseHeldMessages();
  bool mayWait(std::size_t size) const;
  void goOnLater();
  void goOn();
  bool receiveSome(ReceivedQueue& queue);
  bool receiveNext(ReceivedQueue& queue);
  void receive(boost::json::value element);
  void receiveResponse(const boost::json::value& responseId, Message& message);
  void receiveRequest(Message& message);
  void logMistake(std::string line);
  void logHeldMistakes();
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
