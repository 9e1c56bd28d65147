#include "helper/PolicyBook.h"

#include <utility>

#include "helper/LoadRefusal.h"

namespace zovk::helper {
namespace {

/// Numbers run through all web views, so that an answer never meets another view's question.
Id nextNumber() {
  static Id last = 0;
  return ++last;
}

}  // namespace

std::string addressOf(WebKitNavigationAction* action) {
  WebKitURIRequest* request = webkit_navigation_action_get_request(action);
  const char* address = request == nullptr ? nullptr : webkit_uri_request_get_uri(request);
  return address == nullptr ? "" : address;
}

PolicyBook::PolicyBook(Id view, EventSink events, std::string refusal)
    : view_(view), events_(std::move(events)), refusal_(std::move(refusal)) {}

PolicyBook::~PolicyBook() {
  for (const auto& [number, waiting] : waiting_) {
    webkit_policy_decision_ignore(waiting.decision.get());
  }
}

bool PolicyBook::ask(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) return false;
  WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
      WEBKIT_NAVIGATION_POLICY_DECISION(decision));
  // The engine does not say which frame of the page navigates.
  const bool newWindow = type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION;
  const Id number = nextNumber();
  const std::string address = addressOf(action);
  waiting_.emplace(number, Waiting{GObjectPtr<WebKitPolicyDecision>::retain(decision), address});
  events_({{"type", "web.policy"},
           {"view", view_},
           {"decision", number},
           {"url", address},
           {"target", newWindow ? "none" : "main"}});
  return true;
}

void PolicyBook::decide(Id number, bool allow) {
  const auto found = waiting_.find(number);
  if (found == waiting_.end()) return;
  const Waiting answered = std::move(found->second);
  waiting_.erase(found);
  const std::string refusal = allow ? refusalOf(answered.address) : "";
  if (allow && refusal.empty()) return webkit_policy_decision_use(answered.decision.get());
  webkit_policy_decision_ignore(answered.decision.get());
  if (refusal.empty()) return;
  events_({{"type", "web.provisionalFailed"},
           {"view", view_},
           {"url", answered.address},
           {"error", refusal}});
}

std::string PolicyBook::refusalOf(const std::string& address) const {
  if (refusal_.empty()) return loadRefusal(address);
  sendLog(events_, "helper: no page is loaded: " + refusal_);
  return refusal_;
}

}  // namespace zovk::helper
