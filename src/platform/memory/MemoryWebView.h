#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/memory/MemoryScheduler.h"
#include "platform/memory/MemoryView.h"
#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// The decision on a navigation, which may come later.
class MemoryDecision {
 public:
  std::optional<NavigationPolicy> answer() const { return *answer_; }
  bool undecided() const { return !answer_->has_value(); }
  bool allowed() const { return *answer_ == NavigationPolicy::kAllow; }
  bool cancelled() const { return *answer_ == NavigationPolicy::kCancel; }

 private:
  friend class MemoryWebView;
  std::shared_ptr<std::optional<NavigationPolicy>> answer_ =
      std::make_shared<std::optional<NavigationPolicy>>();
};

/// One command to load.
struct MemoryLoad {
  std::string url;
  std::optional<std::string> readAccessUrl;  ///< Present for a file.
  friend bool operator==(const MemoryLoad&, const MemoryLoad&) = default;
};

/// A web view without pages: it records its commands, and a test plays the page. Main thread only.
/// Events that the test plays reach the delegate or handler at once. Results of scripts come
/// through the scheduler, which must outlive every running script.
class MemoryWebView final : public MemoryViewCommands<WebView> {
 public:
  using ScriptHandler = std::function<ScriptResult(const std::string& script)>;

  MemoryWebView(MemoryScheduler& scheduler, WebViewConfiguration configuration);
  ~MemoryWebView() override;
  MemoryWebView(const MemoryWebView&) = delete;
  MemoryWebView& operator=(const MemoryWebView&) = delete;

  void setNavigationDelegate(std::weak_ptr<WebViewDelegate> delegate) override;
  void load(const std::string& url) override;
  void loadFile(const std::string& url, const std::string& readAccessUrl) override;
  void stopLoading() override { ++stopCount_; }
  void reload() override { ++reloadCount_; }
  std::string url() const override { return url_; }
  void allowAhead(const std::string& url) override { allowedAhead_.push_back(url); }
  void fetchAhead(const std::string& address, const std::string& script) override {
    fetchedAhead_ = {address, script};
  }
  void evaluateJavaScript(const std::string& script,
                          std::function<void(ScriptResult)> completion) override;

  // The recorded commands.

  const WebViewConfiguration& configuration() const { return configuration_; }
  const std::vector<std::string>& allowedAhead() const { return allowedAhead_; }
  /// Returns address and script.
  const std::pair<std::string, std::string>& fetchedAhead() const { return fetchedAhead_; }
  const std::vector<MemoryLoad>& loads() const { return loads_; }
  /// Returns the address of the last load; empty if there was none.
  std::string lastLoad() const { return loads_.empty() ? std::string() : loads_.back().url; }
  int stopCount() const { return stopCount_; }
  int reloadCount() const { return reloadCount_; }
  const std::vector<std::string>& scripts() const { return scripts_; }
  /// Sets the answers of scripts, which are asked for when the results are due. Without it every
  /// script gives null.
  void setScriptHandler(ScriptHandler handler) { scriptHandler_ = std::move(handler); }

  // The test plays the page with these.

  /// Returns false if there is no handler of that name.
  bool postMessage(const std::string& name, const std::optional<boost::json::value>& body);
  /// Plays a navigation that the page asks for. Allowed if there is no delegate.
  MemoryDecision navigate(const std::string& url, TargetFrame target = TargetFrame::kMain);
  void requestNewWindow(const std::string& url);
  /// Plays the web view writing a requested address in another way.
  void resolveAddress(const std::string& asked, const std::string& address);
  void setUrl(const std::string& url) { url_ = url; }
  /// Plays the start of a load, of the last allowed navigation of the main frame.
  void startProvisional();
  /// Plays the new page replacing the old one.
  void commit();
  void finish();
  void failProvisional(const std::string& error);
  void fail(const std::string& error);
  void terminateProcess();
  void failProcess(const std::string& reason);
  void setResponsive(bool responsive);
  /// Plays a successful load: navigation, start, commit, finish. Returns false if it was not
  /// allowed at once.
  bool open(const std::string& url);

 private:
  MemoryScheduler& scheduler_;
  WebViewConfiguration configuration_;
  std::weak_ptr<WebViewDelegate> delegate_;
  std::vector<MemoryLoad> loads_;
  std::vector<std::string> scripts_;
  std::vector<std::string> allowedAhead_;
  std::pair<std::string, std::string> fetchedAhead_;
  ScriptHandler scriptHandler_;
  std::string url_;
  std::shared_ptr<std::string> allowedUrl_ = std::make_shared<std::string>();
  std::shared_ptr<MemoryWebView*> self_;  // lets later results notice that it is gone
  int stopCount_ = 0;
  int reloadCount_ = 0;
};

}  // namespace zovk
