#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <boost/json/value.hpp>
#include <zovkpopup/platform/View.h>

namespace zovk {

enum class TargetFrame {
  kNone,  ///< The page asked for a new window.
  kMain,
  kSub,
};

/// A navigation that a page asks for.
struct NavigationAction {
  std::string url;
  TargetFrame targetFrame = TargetFrame::kMain;
};

enum class NavigationPolicy { kCancel, kAllow };

/// Answers one navigation. Only the first answer counts. Dropping the last copy without an answer
/// cancels the navigation, so that a page never waits for ever. Main thread only.
using NavigationDecision = std::function<void(NavigationPolicy)>;

class WebView;

/// Receives the events of a web view. Main thread only; each event comes from the host's pump. The
/// web view does not own its delegate. Without one it allows all navigations. Every method gets the
/// web view that the event is about; it exists until the method returns, unless the method releases
/// it. No method may fail.
class WebViewDelegate {
 public:
  virtual ~WebViewDelegate() = default;
  virtual void decidePolicyForNavigationAction(WebView& webView, const NavigationAction& action,
                                               const NavigationDecision& decide) = 0;
  virtual void didStartProvisionalNavigation(WebView& webView) = 0;
  /// The new page replaces the old one; none of its scripts has run yet.
  virtual void didCommitNavigation(WebView& /*webView*/) {}
  virtual void didFailProvisionalNavigation(WebView& webView, const std::string& error) = 0;
  virtual void didFailNavigation(WebView& webView, const std::string& error) = 0;
  virtual void didFinishNavigation(WebView& webView) = 0;
  virtual void webContentProcessDidTerminate(WebView& webView) = 0;
  /// The page's process ended repeatedly before the page was loaded. It is not loaded again.
  virtual void webContentProcessDidFail(WebView& /*webView*/, const std::string& /*reason*/) {}
  /// The page's process has not reacted to the player for some seconds, or reacts again.
  virtual void webContentProcessResponsivenessDidChange(WebView& /*webView*/, bool /*responsive*/) {
  }
  /// The page asked for a new window. No window is ever made.
  virtual void createWebView(WebView& webView, const NavigationAction& action) = 0;
  /// The web view was asked to load `asked`. All events of that load write the address as
  /// `address`: with the host in small letters and blanks escaped. Comes before all other events of
  /// that load.
  virtual void didResolveAddress(WebView& /*webView*/, const std::string& /*asked*/,
                                 const std::string& /*address*/) {}
};

/// Receives the posts of pages. Main thread only.
class ScriptMessageHandler {
 public:
  virtual ~ScriptMessageHandler() = default;
  /// `body` is the posted value: any JSON value, or absent if the page posted nothing.
  virtual void didReceiveScriptMessage(const std::string& name,
                                       const std::optional<boost::json::value>& body) = 0;
};

/// The settings of a new web view. They own the handlers.
struct WebViewConfiguration {
  std::map<std::string, std::shared_ptr<ScriptMessageHandler>> scriptMessageHandlers;
  bool allowsInlineMediaPlayback = false;
  bool prefersMobileContent = false;
  bool bounces = true;
  bool showsVerticalScrollIndicator = true;
  bool adjustsContentInset = true;
  bool opaque = true;
};

/// The result of a script: exactly one of `value` and `error` is present. A script without a value
/// gives null.
struct ScriptResult {
  std::optional<boost::json::value> value;
  std::optional<std::string> error;
};

/// A page in a view. Main thread only; commands are sent in order, and events and results come from
/// the host's pump. The holder owns the web view, which owns its handlers. A failure to load comes
/// as an event, a failure of a script in its result. A web view that is gone answers every script
/// with an error.
class WebView : public View {
 public:
  virtual void setNavigationDelegate(std::weak_ptr<WebViewDelegate> delegate) = 0;
  virtual void load(const std::string& url) = 0;
  /// Loads a file address. The page can read only the file or folder that `readAccessUrl` names.
  virtual void loadFile(const std::string& url, const std::string& readAccessUrl) = 0;
  virtual void stopLoading() = 0;
  /// Loads the page again, or the requested address if its page never came.
  virtual void reload() = 0;
  /// Returns the last reported address of the page; empty if there is none.
  virtual std::string url() const = 0;
  /// Announces, before a load, that the delegate will allow the navigation to `url`, so that the
  /// load need not wait for the answer. The delegate is asked nevertheless; if it cancels, the load
  /// is stopped. Applies to one load. By default it does nothing.
  virtual void allowAhead(const std::string& /*url*/) {}
  /// Announces that the delegate will run `script` whenever it is asked about exactly this address,
  /// so that the result can be fetched in the meantime. An empty address withdraws that. By default
  /// it does nothing.
  virtual void fetchAhead(const std::string& /*address*/, const std::string& /*script*/) {}
  /// Runs a script in the page. The completion owns its result and may move it on.
  virtual void evaluateJavaScript(const std::string& script,
                                  std::function<void(ScriptResult)> completion) = 0;
};

}  // namespace zovk
