#include "webhost/PolicyBook.h"

#include <utility>

namespace zovk {
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

PolicyBook::PolicyBook(Id view, const Addresses& addresses, EventSink events)
    : view_(view), addresses_(addresses), events_(std::move(events)) {}

PolicyBook::~PolicyBook() {
  for (const auto& [number, decision] : waiting_) webkit_policy_decision_ignore(decision.get());
}

bool PolicyBook::ask(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) return false;
  WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
      WEBKIT_NAVIGATION_POLICY_DECISION(decision));
  // The engine does not say which frame of the page navigates.
  const bool newWindow = type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION;
  const Id number = nextNumber();
  waiting_.emplace(number, GObjectPtr<WebKitPolicyDecision>::retain(decision));
  events_({{"type", "web.policy"},
           {"view", view_},
           {"decision", number},
           {"url", addresses_.asWritten(addressOf(action))},
           {"target", newWindow ? "none" : "main"}});
  return true;
}

void PolicyBook::decide(Id number, bool allow) {
  const auto found = waiting_.find(number);
  if (found == waiting_.end()) return;
  const GObjectPtr<WebKitPolicyDecision> decision = std::move(found->second);
  waiting_.erase(found);
  if (allow) {
    webkit_policy_decision_use(decision.get());
  } else {
    webkit_policy_decision_ignore(decision.get());
  }
}

}  // namespace zovk
