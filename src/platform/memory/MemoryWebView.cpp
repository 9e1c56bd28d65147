#include "platform/memory/MemoryWebView.h"

#include <utility>

namespace zovk {
namespace {

std::shared_ptr<MemoryViewNode> webNode() {
  auto node = std::make_shared<MemoryViewNode>();
  node->name = "web";
  return node;
}

// The answer that a decision waits for. Without any, the last copy cancels.
class PendingAnswer {
 public:
  explicit PendingAnswer(std::function<void(NavigationPolicy)> answer)
      : answer_(std::move(answer)) {}
  ~PendingAnswer() { give(NavigationPolicy::kCancel); }
  PendingAnswer(const PendingAnswer&) = delete;
  PendingAnswer& operator=(const PendingAnswer&) = delete;
  void give(NavigationPolicy policy) {
    if (const auto answer = std::exchange(answer_, nullptr)) answer(policy);
  }

 private:
  std::function<void(NavigationPolicy)> answer_;
};

}  // namespace

MemoryWebView::MemoryWebView(MemoryScheduler& scheduler, WebViewConfiguration configuration)
    : MemoryViewCommands(webNode()),
      scheduler_(scheduler),
      configuration_(std::move(configuration)),
      self_(std::make_shared<MemoryWebView*>(this)) {}

MemoryWebView::~MemoryWebView() {
  node().detach();
  node().present = false;
}

void MemoryWebView::setNavigationDelegate(std::weak_ptr<WebViewDelegate> delegate) {
  delegate_ = std::move(delegate);
}

void MemoryWebView::load(const std::string& url) {
  loads_.push_back({url, std::nullopt});
}

void MemoryWebView::loadFile(const std::string& url, const std::string& readAccessUrl) {
  loads_.push_back({url, readAccessUrl});
}

void MemoryWebView::evaluateJavaScript(const std::string& script,
                                       std::function<void(ScriptResult)> completion) {
  scripts_.push_back(script);
  scheduler_.async([self = std::weak_ptr(self_), script, completion = std::move(completion)] {
    const auto alive = self.lock();
    ScriptResult result;
    if (!alive) {
      result.error = "the web view is gone";
    } else if (const auto handler = (*alive)->scriptHandler_) {
      result = handler(script);
    } else {
      result.value = nullptr;
    }
    if (completion) completion(std::move(result));
  });
}

bool MemoryWebView::postMessage(const std::string& name,
                                const std::optional<boost::json::value>& body) {
  const auto found = configuration_.scriptMessageHandlers.find(name);
  if (found == configuration_.scriptMessageHandlers.end() || !found->second) return false;
  const auto handler = found->second;  // kept while it runs: it may drop this web view
  handler->didReceiveScriptMessage(name, body);
  return true;
}

MemoryDecision MemoryWebView::navigate(const std::string& url, TargetFrame target) {
  MemoryDecision decision;
  const auto pending = std::make_shared<PendingAnswer>(
      [answer = decision.answer_, allowedUrl = allowedUrl_, url, target](NavigationPolicy policy) {
        *answer = policy;
        if (policy == NavigationPolicy::kAllow && target == TargetFrame::kMain) *allowedUrl = url;
      });
  if (const auto delegate = delegate_.lock()) {
    delegate->decidePolicyForNavigationAction(
        *this, {url, target}, [pending](NavigationPolicy policy) { pending->give(policy); });
  } else {
    pending->give(NavigationPolicy::kAllow);
  }
  return decision;
}

void MemoryWebView::requestNewWindow(const std::string& url) {
  if (const auto delegate = delegate_.lock())
    delegate->createWebView(*this, {url, TargetFrame::kNone});
}

void MemoryWebView::resolveAddress(const std::string& asked, const std::string& address) {
  if (const auto delegate = delegate_.lock()) delegate->didResolveAddress(*this, asked, address);
}

void MemoryWebView::startProvisional() {
  if (!allowedUrl_->empty()) url_ = *allowedUrl_;
  if (const auto delegate = delegate_.lock()) delegate->didStartProvisionalNavigation(*this);
}

void MemoryWebView::commit() {
  if (const auto delegate = delegate_.lock()) delegate->didCommitNavigation(*this);
}

void MemoryWebView::finish() {
  if (const auto delegate = delegate_.lock()) delegate->didFinishNavigation(*this);
}

void MemoryWebView::failProvisional(const std::string& error) {
  if (const auto delegate = delegate_.lock()) delegate->didFailProvisionalNavigation(*this, error);
}

void MemoryWebView::fail(const std::string& error) {
  if (const auto delegate = delegate_.lock()) delegate->didFailNavigation(*this, error);
}

void MemoryWebView::terminateProcess() {
  if (const auto delegate = delegate_.lock()) delegate->webContentProcessDidTerminate(*this);
}

void MemoryWebView::failProcess(const std::string& reason) {
  if (const auto delegate = delegate_.lock()) delegate->webContentProcessDidFail(*this, reason);
}

void MemoryWebView::setResponsive(bool responsive) {
  if (const auto delegate = delegate_.lock()) {
    delegate->webContentProcessResponsivenessDidChange(*this, responsive);
  }
}

bool MemoryWebView::open(const std::string& url) {
  if (!navigate(url).allowed()) return false;
  startProvisional();
  commit();
  finish();
  return true;
}

}  // namespace zovk
