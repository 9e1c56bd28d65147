#pragma once

#include <map>
#include <string>

#include <webkit/webkit.h>

#include "webhost/Addresses.h"
#include "webhost/Events.h"
#include "webhost/GObjectPtr.h"

namespace zovk {

/// The navigations of one page that wait for the game's answer. Each is answered once; those that
/// are left at the end are cancelled.
class PolicyBook {
 public:
  PolicyBook(Id view, const Addresses& addresses, EventSink events);
  ~PolicyBook();
  PolicyBook(const PolicyBook&) = delete;
  PolicyBook& operator=(const PolicyBook&) = delete;

  /// Whether the decision is one that the game makes.
  bool ask(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  void decide(Id number, bool allow);

 private:
  Id view_;
  const Addresses& addresses_;
  EventSink events_;
  std::map<Id, GObjectPtr<WebKitPolicyDecision>> waiting_;
};

std::string addressOf(WebKitNavigationAction* action);

}  // namespace zovk
