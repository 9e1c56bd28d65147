#pragma once

#include <map>
#include <string>

#include <webkit/webkit.h>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// The navigations of one page that wait for the game's answer. Each is answered once; those that
/// are left at the end are cancelled.
class PolicyBook {
 public:
  /// With a `refusal` no page is loaded, whatever the game says: every load fails for that reason.
  PolicyBook(Id view, EventSink events, std::string refusal);
  ~PolicyBook();
  PolicyBook(const PolicyBook&) = delete;
  PolicyBook& operator=(const PolicyBook&) = delete;

  /// Whether the decision is one that the game makes.
  bool ask(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  void decide(Id number, bool allow);

 private:
  struct Waiting {
    GObjectPtr<WebKitPolicyDecision> decision;
    std::string address;
  };
  /// Why it is not loaded although the game allows it; empty when it is.
  std::string refusalOf(const std::string& address) const;

  Id view_;
  EventSink events_;
  std::string refusal_;
  std::map<Id, Waiting> waiting_;
};

std::string addressOf(WebKitNavigationAction* action);

}  // namespace zovk::helper
