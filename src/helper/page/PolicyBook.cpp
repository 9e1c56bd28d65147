#include "helper/page/PolicyBook.h"

#include <utility>

#include "helper/page/LoadRefusal.h"
#include "protocol/MessageNames.h"

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

std::optional<PolicyBook::Question> PolicyBook::ask(WebKitPolicyDecision* decision,
                                                    WebKitPolicyDecisionType type) {
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) return std::nullopt;
  WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
      WEBKIT_NAVIGATION_POLICY_DECISION(decision));
  // The engine does not say which frame of the page navigates.
  const bool newWindow = type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION;
  const Id number = nextNumber();
  const std::string address = addressOf(action);
  if (!newWindow && takeAhead(action, address)) {
    wentAhead_ = number;
    webkit_policy_decision_use(decision);
  } else {
    waiting_.emplace(number, Waiting{GObjectPtr<WebKitPolicyDecision>::retain(decision), address});
  }
  return Question{number, address, newWindow ? word::kNone : word::kMain};
}

// A page that is where the address leads may navigate there, too, by a link, say.
bool PolicyBook::takeAhead(WebKitNavigationAction* action, const std::string& address) {
  const bool ours =
      webkit_navigation_action_get_navigation_type(action) == WEBKIT_NAVIGATION_TYPE_OTHER &&
      webkit_navigation_action_is_user_gesture(action) == FALSE &&
      webkit_navigation_action_is_redirect(action) == FALSE;
  if (!ours || allowedAhead_.empty() || allowedAhead_ != address) return false;
  allowedAhead_.clear();
  return refusal_.empty() && loadRefusal(address).empty();
}

bool PolicyBook::decide(Id number, bool allow) {
  if (number == wentAhead_) {
    wentAhead_ = 0;
    return !allow;
  }
  const auto found = waiting_.find(number);
  if (found == waiting_.end()) return false;
  const Waiting answered = std::move(found->second);
  waiting_.erase(found);
  const std::string refusal = allow ? refusalOf(answered.address) : "";
  if (allow && refusal.empty()) {
    webkit_policy_decision_use(answered.decision.get());
    return false;
  }
  webkit_policy_decision_ignore(answered.decision.get());
  if (refusal.empty()) return false;
  events_({{member::kType, event::kWebProvisionalFailed},
           {member::kView, view_},
           {member::kUrl, answered.address},
           {member::kError, refusal}});
  return false;
}

std::string PolicyBook::refusalOf(const std::string& address) const {
  if (refusal_.empty()) return loadRefusal(address);
  sendLog(events_, "helper: no page is loaded: " + refusal_);
  return refusal_;
}

}  // namespace zovk::helper
