#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/WebHostView.h"
#include "zovkpopup/platform/WebView.h"

namespace zovk {

/// A web view in the helper.
class WebHostWebView final : public WebHostViewOf<WebView> {
 public:
  static std::shared_ptr<WebHostWebView> make(const std::shared_ptr<WebHostSession>& session,
                                              const WebViewConfiguration& configuration);
  WebHostWebView(std::shared_ptr<WebHostSession> session, WebHostId id,
                 WebViewConfiguration configuration);
  ~WebHostWebView() override;

  void setNavigationDelegate(std::weak_ptr<WebViewDelegate> delegate) override;
  void load(const std::string& url) override;
  void loadFile(const std::string& url, const std::string& readAccessUrl) override;
  void stopLoading() override;
  void reload() override;
  std::string url() const override { return url_; }
  void evaluateJavaScript(const std::string& script,
                          std::function<void(ScriptResult)> completion) override;

  // What the helper tells.
  void urlChanged(const std::string& url);
  void pageCommitted();
  void processEnded();
  void decidePolicy(const NavigationAction& action, WebHostId decision);
  void receiveMessage(const std::string& name, const std::optional<boost::json::value>& body);
  std::shared_ptr<WebViewDelegate> delegate() const { return delegate_.lock(); }

 private:
  WebHostMessage about(const char* type) const;
  void beginLoad();

  const WebViewConfiguration configuration_;
  std::weak_ptr<WebViewDelegate> delegate_;
  std::string url_;
  std::string readAccessUrl_;  // of the file that was loaded last; empty after another address
  bool hasLoaded_ = false;
  bool committed_ = false;  // since the last load, or since the page's process last ended
  int vainStarts_ = 0;      // processes in a row that ended before the page was there
};

}  // namespace zovk
