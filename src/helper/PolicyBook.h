#pragma once

#include <cstddef>
#include <map>
#include <optional>
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

  /// What the game is to be asked. It answers by `decide`.
  struct Question {
    Id number = 0;
    std::string address;
    const char* target = "";
  };

  /// Absent when the decision is none that the game makes.
  std::optional<Question> ask(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  /// The first navigation to that address that the program itself begins goes on before the game
  /// has answered; an empty address takes that back.
  void allowAhead(const std::string& address) { allowedAhead_ = address; }
  /// True when the game cancels what has gone on already: whoever has the page stops it.
  bool decide(Id number, bool allow);
  /// How many navigations wait for the game.
  std::size_t waiting() const { return waiting_.size(); }

 private:
  bool takeAhead(WebKitNavigationAction* action, const std::string& address);

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
  std::string allowedAhead_;
  Id wentAhead_ = 0;  // what the game has still to hear of
};

std::string addressOf(WebKitNavigationAction* action);

}  // namespace zovk::helper
