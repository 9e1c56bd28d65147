#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/helper/HelperView.h"
#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// A web view in the helper.
class HelperWebView final : public HelperViewOf<WebView> {
 public:
  static std::shared_ptr<HelperWebView> make(const std::shared_ptr<HelperClient>& session,
                                             const WebViewConfiguration& configuration);
  HelperWebView(std::shared_ptr<HelperClient> session, HelperId id,
                WebViewConfiguration configuration);
  ~HelperWebView() override;

  void setNavigationDelegate(std::weak_ptr<WebViewDelegate> delegate) override;
  void load(const std::string& url) override;
  void loadFile(const std::string& url, const std::string& readAccessUrl) override;
  void stopLoading() override;
  void reload() override;
  std::string url() const override { return url_; }
  void allowAhead(const std::string& url) override { allowedAhead_ = url; }
  void fetchAhead(const std::string& address, const std::string& script) override;
  void evaluateJavaScript(const std::string& script,
                          std::function<void(ScriptResult)> completion) override;

  // Events of the helper.
  void urlChanged(const std::string& url);
  void pageCommitted();
  void processEnded();
  /// Asks the delegate. The helper may already be fetching the result that the delegate will ask
  /// for.
  void decidePolicy(const NavigationAction& action, HelperId decision, bool fetching);
  void fetched(HelperId decision, HelperMessage& answer);
  /// Reports that results fetched in advance will not come.
  void fetchesLost();
  void receiveMessage(const std::string& name, const std::optional<boost::json::value>& body);
  std::shared_ptr<WebViewDelegate> delegate() const { return delegate_.lock(); }

 private:
  HelperMessage about(std::string_view type) const;
  void beginLoad();
  void sendLoad(const HelperMessage& command, const std::string& url);
  void ask(const NavigationAction& action, HelperId decision);

  const WebViewConfiguration configuration_;
  std::weak_ptr<WebViewDelegate> delegate_;
  std::string url_;
  std::string readAccessUrl_;  // of the file that was loaded last; empty after another address
  bool hasLoaded_ = false;
  bool committed_ = false;  // since the last load, or since the page's process last ended
  std::string allowedAhead_;
  std::string fetchScript_;
  HelperId fetching_ = 0;  // while the delegate is asked: the fetch for its decision
  std::map<HelperId, std::function<void(ScriptResult)>> fetches_;  // by decision
  int vainStarts_ = 0;  // processes in a row that ended before the page was there
};

}  // namespace zovk
