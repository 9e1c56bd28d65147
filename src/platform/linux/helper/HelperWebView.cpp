#include "platform/linux/helper/HelperWebView.h"

#include <utility>

#include "logging/ZPLogger.h"
#include "protocol/MessageNames.h"

namespace zovk {
namespace {

constexpr const char* kGone = "The page went away before the script was done";
constexpr const char* kCannotRun =
    "The page cannot be shown: its process ended before it was there";
constexpr int kVainStarts = 2;

/// The decision for a page that waits. It checks the helper's number, because the page of a lost
/// helper does not wait any more.
class PendingDecision {
 public:
  PendingDecision(const std::shared_ptr<HelperClient>& session, HelperId view, HelperId decision)
      : session_(session), view_(view), decision_(decision), helper_(session->helperNumber()) {}
  ~PendingDecision() { answer(NavigationPolicy::kCancel); }
  PendingDecision(const PendingDecision&) = delete;
  PendingDecision& operator=(const PendingDecision&) = delete;

  void answer(NavigationPolicy policy) {
    if (std::exchange(answered_, true)) return;
    const auto session = session_.lock();
    if (!session || session->helperNumber() != helper_) return;
    if (!session->objects().webViews.contains(view_)) return;
    session->send({{member::kType, command::kWebDecide},
                   {member::kView, view_},
                   {member::kDecision, decision_},
                   {member::kAllow, policy == NavigationPolicy::kAllow}});
  }

 private:
  const std::weak_ptr<HelperClient> session_;
  const HelperId view_;
  const HelperId decision_;
  const int helper_;
  bool answered_ = false;
};

/// Tells everybody who waits that nothing comes, from the pump.
void failLater(HelperClient& session,
               const std::map<HelperId, std::function<void(ScriptResult)>>& waiting) {
  for (const auto& [decision, completion] : waiting) {
    session.later([completion = completion] { completion({std::nullopt, kGone}); });
  }
}

ScriptResult scriptResult(HelperMessage* answer) {
  if (answer == nullptr) return {std::nullopt, kGone};
  if (auto* value = answer->if_contains(member::kValue)) return {std::move(*value), std::nullopt};
  return {std::nullopt, std::string(answer->at(member::kError).as_string())};
}

HelperMessage creation(HelperId id, const WebViewConfiguration& configuration) {
  boost::json::array handlers;
  for (const auto& [name, handler] : configuration.scriptMessageHandlers) {
    handlers.emplace_back(name);
  }
  return {{member::kType, command::kWebCreate},
          {member::kView, id},
          {member::kHandlers, std::move(handlers)},
          {member::kInlineMedia, configuration.allowsInlineMediaPlayback},
          {member::kMobile, configuration.prefersMobileContent},
          {member::kBounces, configuration.bounces},
          {member::kScrollIndicator, configuration.showsVerticalScrollIndicator},
          {member::kAdjustInset, configuration.adjustsContentInset},
          {member::kOpaque, configuration.opaque}};
}

}  // namespace

std::shared_ptr<HelperWebView> HelperWebView::make(const std::shared_ptr<HelperClient>& session,
                                                   const WebViewConfiguration& configuration) {
  const HelperId id = session->newId();
  auto view = std::make_shared<HelperWebView>(session, id, configuration);
  session->objects().webViews[id] = view;
  session->command(id, HelperAspect::kExistence, creation(id, configuration));
  return view;
}

HelperWebView::HelperWebView(std::shared_ptr<HelperClient> session, HelperId id,
                             WebViewConfiguration configuration)
    : HelperViewOf(std::move(session), id), configuration_(std::move(configuration)) {}

HelperWebView::~HelperWebView() {
  fetchesLost();
  session().objects().webViews.erase(id());
  session().forget(id());
  session().send(about(command::kWebClose));
}

HelperMessage HelperWebView::about(std::string_view type) const {
  return {{member::kType, type}, {member::kView, id()}};
}

void HelperWebView::setNavigationDelegate(std::weak_ptr<WebViewDelegate> delegate) {
  delegate_ = std::move(delegate);
}

void HelperWebView::load(const std::string& url) {
  readAccessUrl_.clear();
  beginLoad();
  sendLoad({{member::kType, command::kWebLoad}, {member::kView, id()}, {member::kUrl, url}}, url);
}

void HelperWebView::loadFile(const std::string& url, const std::string& readAccessUrl) {
  readAccessUrl_ = readAccessUrl;
  beginLoad();
  sendLoad({{member::kType, command::kWebLoadFile},
            {member::kView, id()},
            {member::kUrl, url},
            {member::kReadAccess, readAccessUrl}},
           url);
}

// A helper that is started again asks: what was allowed before may no longer be allowed.
void HelperWebView::sendLoad(const HelperMessage& command, const std::string& url) {
  HelperMessage sent = command;
  if (!url.empty() && std::exchange(allowedAhead_, {}) == url) sent[member::kAllowed] = true;
  session().command(id(), HelperAspect::kAddress, sent);
  session().journal().remember(id(), HelperAspect::kAddress, command);
}

void HelperWebView::beginLoad() {
  hasLoaded_ = true;
  committed_ = false;
  vainStarts_ = 0;
}

void HelperWebView::stopLoading() {
  session().send(about(command::kWebStop));
}

void HelperWebView::reload() {
  session().send(about(command::kWebReload));
}

void HelperWebView::evaluateJavaScript(const std::string& script,
                                       std::function<void(ScriptResult)> completion) {
  if (completion && fetching_ != 0 && script == fetchScript_) {
    fetches_[std::exchange(fetching_, 0)] = std::move(completion);
    return;
  }
  HelperMessage message = about(completion ? command::kWebEvaluate : command::kWebRun);
  message[member::kScript] = script;
  if (!completion) return session().send(message);
  session().request(std::move(message), event::kWebEvaluated, id(),
                    [completion = std::move(completion)](HelperMessage* answer) {
                      completion(scriptResult(answer));
                    });
}

void HelperWebView::urlChanged(const std::string& url) {
  url_ = url;
  if (url.empty() || !hasLoaded_) return;
  // A new helper takes up where the page stands now.
  HelperMessage again = about(command::kWebLoad);
  again[member::kUrl] = url;
  if (!readAccessUrl_.empty() && url.starts_with("file:")) {
    again[member::kType] = command::kWebLoadFile;
    again[member::kReadAccess] = readAccessUrl_;
  }
  session().journal().remember(id(), HelperAspect::kAddress, again);
}

void HelperWebView::pageCommitted() {
  committed_ = true;
  if (const auto listener = delegate()) listener->didCommitNavigation(*this);
}

// A page that has come is loaded again any number of times; one that never comes is given up.
void HelperWebView::processEnded() {
  const bool inVain = hasLoaded_ && !std::exchange(committed_, false);
  vainStarts_ = inVain ? vainStarts_ + 1 : 0;
  const auto listener = delegate();
  if (!listener) return;
  if (vainStarts_ < kVainStarts) return listener->webContentProcessDidTerminate(*this);
  logError("Web process ended %d times before its page was there, giving up", vainStarts_);
  listener->webContentProcessDidFail(*this, kCannotRun);
}

void HelperWebView::fetchAhead(const std::string& address, const std::string& script) {
  fetchScript_ = script;
  command(HelperAspect::kFetching, {{member::kType, command::kWebFetchAhead},
                                    {member::kView, id()},
                                    {member::kAddress, address},
                                    {member::kScript, script}});
}

void HelperWebView::fetched(HelperId decision, HelperMessage& answer) {
  auto waiting = fetches_.extract(decision);
  if (!waiting.empty()) waiting.mapped()(scriptResult(&answer));
}

void HelperWebView::fetchesLost() {
  failLater(session(), std::exchange(fetches_, {}));
}

void HelperWebView::decidePolicy(const NavigationAction& action, HelperId decision, bool fetching) {
  fetching_ = fetching ? decision : 0;
  ask(action, decision);
  fetching_ = 0;
}

void HelperWebView::ask(const NavigationAction& action, HelperId decision) {
  const auto pending =
      std::make_shared<PendingDecision>(session().shared_from_this(), id(), decision);
  const auto listener = delegate();
  if (!listener) return pending->answer(NavigationPolicy::kAllow);
  listener->decidePolicyForNavigationAction(
      *this, action, [pending](NavigationPolicy policy) { pending->answer(policy); });
}

void HelperWebView::receiveMessage(const std::string& name,
                                   const std::optional<boost::json::value>& body) {
  const auto found = configuration_.scriptMessageHandlers.find(name);
  if (found == configuration_.scriptMessageHandlers.end() || !found->second) return;
  const std::shared_ptr<ScriptMessageHandler> handler = found->second;
  handler->didReceiveScriptMessage(name, body);
}

}  // namespace zovk
