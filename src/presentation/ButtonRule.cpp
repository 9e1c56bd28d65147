#include "presentation/ButtonRule.h"

namespace zovk {

ButtonChanges buttonRule(const ZOVKPopupModel& popup, bool needRefresh) {
  if (popup.scene == kPolicyScene) {
    return {{"returnBtn", "crossBtn", "refreshBtn", "aloneConfirmStackView"}, {"backgroundView"}};
  }
  if (popup.scene == kPermissionScene) {
    return {{"returnBtn", "crossBtn", "refreshBtn", "rejectBtn", "stackView"},
            {"aloneConfirmStackView", "backgroundView"}};
  }
  if (popup.pop_type != kPopTypeGame) {
    return {{"rejectBtn", "confirmBtn", "stackView", "aloneConfirmStackView", "returnBtn",
             "refreshBtn"},
            {}};
  }
  ButtonChanges changes{{"crossBtn", "confirmBtn", "rejectBtn", "stackView",
                         "aloneConfirmStackView", "centerConfirmBtn"},
                        {}};
  if (!needRefresh) {
    changes.show.emplace_back("refreshBtn");
    changes.dimContent = true;
  }
  return changes;
}

bool hasAnswerButtons(const ZOVKPopupModel& popup) {
  return popup.scene == kPolicyScene || popup.scene == kPermissionScene;
}

}  // namespace zovk
