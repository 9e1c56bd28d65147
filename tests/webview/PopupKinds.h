#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace zovk {

/// The views that the game hides on a fresh layout for one kind of popup, and the remaining
/// buttons, in the order of the tab key.
struct PopupKind {
  const char* name;
  std::vector<std::string> hidden;
  std::vector<std::string> buttons;
};

inline void PrintTo(const PopupKind& kind, std::ostream* stream) {
  *stream << kind.name;
}

inline std::vector<PopupKind> popupKinds() {
  return {
      {"Ordinary",
       {"rejectBtn", "confirmBtn", "stackView", "aloneConfirmStackView", "returnBtn", "refreshBtn"},
       {"crossBtn"}},
      {"Game",
       {"crossBtn", "confirmBtn", "rejectBtn", "stackView", "aloneConfirmStackView",
        "centerConfirmBtn"},
       {"returnBtn", "refreshBtn"}},
      {"Policy",
       {"returnBtn", "crossBtn", "refreshBtn", "aloneConfirmStackView"},
       {"rejectBtn", "confirmBtn"}},
      {"Permission",
       {"returnBtn", "crossBtn", "refreshBtn", "rejectBtn", "stackView"},
       {"centerConfirmBtn"}}};
}

/// Returns the action that the layouts connect to a button.
inline std::string actionOf(const std::string& button) {
  if (button == "rejectBtn") return "rejectButtonDidClicked";
  if (button == "confirmBtn" || button == "centerConfirmBtn") return "confirmButtonDidClicked";
  if (button == "returnBtn") return "returnButtonClicked";
  return button == "crossBtn" ? "crossButtonClicked" : "refreshButtonClicked";
}

}  // namespace zovk
