#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include <webkit/webkit.h>

#include "helper/Events.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// The navigations of one page that wait for the game's answer. Each is answered once; those left
/// at the end are cancelled.
class PolicyBook {
 public:
  /// With a `refusal` no page is loaded, whatever the game answers: every load fails for that
  /// reason.
  PolicyBook(Id view, EventSink events, std::string refusal);
  ~PolicyBook();
  PolicyBook(const PolicyBook&) = delete;
  PolicyBook& operator=(const PolicyBook&) = delete;

  /// A question for the game, which answers with `decide`.
  struct Question {
    Id number = 0;
    std::string address;
    std::string_view target;
  };

  /// Returns the question; absent if the game does not make this decision.
  std::optional<Question> ask(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  /// Lets the next navigation to this address that the program itself begins go on before the game
  /// has answered. An empty address withdraws that.
  void allowAhead(const std::string& address) { allowedAhead_ = address; }
  /// Returns true if the game cancels what has already gone on; the caller then stops the page.
  bool decide(Id number, bool allow);
  /// Returns how many navigations wait for the game.
  std::size_t waiting() const { return waiting_.size(); }

 private:
  bool takeAhead(WebKitNavigationAction* action, const std::string& address);

  struct Waiting {
    GObjectPtr<WebKitPolicyDecision> decision;
    std::string address;
  };
  /// Returns why an address is not loaded although the game allows it; empty if it is loaded.
  std::string refusalOf(const std::string& address) const;

  Id view_;
  EventSink events_;
  std::string refusal_;
  std::map<Id, Waiting> waiting_;
  std::string allowedAhead_;
  Id wentAhead_ = 0;  // the decision that the game still has to make
};

std::string addressOf(WebKitNavigationAction* action);

}  // namespace zovk::helper
