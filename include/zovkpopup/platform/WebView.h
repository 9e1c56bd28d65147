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

/// A navigation that a page wants to make.
struct NavigationAction {
  std::string url;
  TargetFrame targetFrame = TargetFrame::kMain;
};

enum class NavigationPolicy { kCancel, kAllow };

/// Answers one navigation. The first answer counts, later ones do nothing, and dropping the last
/// copy unanswered cancels, so that a page is never left waiting. Main thread only.
using NavigationDecision = std::function<void(NavigationPolicy)>;

class WebView;

/// What happens in a web view. Main thread only; each event comes from the host's pump. The web
/// view refers to its delegate without owning it and goes on without one: navigations are then
/// allowed. Every method is told which web view it is about, which is there until the method
/// returns unless the method lets it go. No method may fail.
class WebViewDelegate {
 public:
  virtual ~WebViewDelegate() = default;
  virtual void decidePolicyForNavigationAction(WebView& webView, const NavigationAction& action,
                                               const NavigationDecision& decide) = 0;
  virtual void didStartProvisionalNavigation(WebView& webView) = 0;
  /// The new page takes the place of the old one; none of its scripts has run yet.
  virtual void didCommitNavigation(WebView& /*webView*/) {}
  virtual void didFailProvisionalNavigation(WebView& webView, const std::string& error) = 0;
  virtual void didFailNavigation(WebView& webView, const std::string& error) = 0;
  virtual void didFinishNavigation(WebView& webView) = 0;
  virtual void webContentProcessDidTerminate(WebView& webView) = 0;
  /// The page's process ended again and again before the page was there: it is not loaded any more.
  virtual void webContentProcessDidFail(WebView& /*webView*/, const std::string& /*reason*/) {}
  /// The page's process did not react to the player for some seconds, or does so again.
  virtual void webContentProcessResponsivenessDidChange(WebView& /*webView*/, bool /*responsive*/) {
  }
  /// The page asked for a new window; none is ever made.
  virtual void createWebView(WebView& webView, const NavigationAction& action) = 0;
  /// The web view was given `asked` to load, which it writes `address` in all that it tells: hosts
  /// in small letters, blanks escaped. Comes before anything else of that load.
  virtual void didResolveAddress(WebView& /*webView*/, const std::string& /*asked*/,
                                 const std::string& /*address*/) {}
};

/// Receives what pages post. Main thread only.
class ScriptMessageHandler {
 public:
  virtual ~ScriptMessageHandler() = default;
  /// `body` is what the page posted: any JSON value; absent when it posted nothing.
  virtual void didReceiveScriptMessage(const std::string& name,
                                       const std::optional<boost::json::value>& body) = 0;
};

/// How a web view is made. The handlers are kept by the web view's configuration.
struct WebViewConfiguration {
  std::map<std::string, std::shared_ptr<ScriptMessageHandler>> scriptMessageHandlers;
  bool allowsInlineMediaPlayback = false;
  bool prefersMobileContent = false;
  bool bounces = true;
  bool showsVerticalScrollIndicator = true;
  bool adjustsContentInset = true;
  bool opaque = true;
};

/// The result of a script: exactly one of the two is present. A script without a value gives null.
struct ScriptResult {
  std::optional<boost::json::value> value;
  std::optional<std::string> error;
};

/// A page in a view. Main thread only; commands go out in order, events and results come back
/// from the host's pump. The holder owns it and it owns its handlers. Failures to load come as
/// events, failures of a script in its result; a web view that is gone answers every script with
/// an error.
class WebView : public View {
 public:
  virtual void setNavigationDelegate(std::weak_ptr<WebViewDelegate> delegate) = 0;
  virtual void load(const std::string& url) = 0;
  /// Loads a file address; the page may read nothing but what `readAccessUrl` names.
  virtual void loadFile(const std::string& url, const std::string& readAccessUrl) = 0;
  virtual void stopLoading() = 0;
  /// Loads the page that is there again, or what was to be loaded when no page came of it yet.
  virtual void reload() = 0;
  /// The address of the page, as last heard; empty when there is none.
  virtual std::string url() const = 0;
  /// Tells before a load that the delegate will allow the navigation to `url`, so that it need not
  /// wait for the answer. The delegate is asked all the same, and where it cancels after all the
  /// load is stopped. Counts for one load. By default it has no effect.
  virtual void allowAhead(const std::string& /*url*/) {}
  /// Tells that the delegate will run `script` whenever it is asked about exactly this address, so
  /// that the result may be fetched meanwhile; an empty address takes that back. By default it has
  /// no effect.
  virtual void fetchAhead(const std::string& /*address*/, const std::string& /*script*/) {}
  /// The result is the completion's own: a long one may be moved on.
  virtual void evaluateJavaScript(const std::string& script,
                                  std::function<void(ScriptResult)> completion) = 0;
};

}  // namespace zovk
