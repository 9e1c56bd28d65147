#include "presentation/ButtonRule.h"

#include "support/Outlets.h"

namespace zovk {

ButtonChanges buttonRule(const ZOVKPopupModel& popup, bool needRefresh) {
  if (popup.scene == kPolicyScene) {
    return {{outlets::kReturn, outlets::kCross, outlets::kRefresh, outlets::kLoneAnswer},
            {outlets::kBackground}};
  }
  if (popup.scene == kPermissionScene) {
    return {
        {outlets::kReturn, outlets::kCross, outlets::kRefresh, outlets::kReject, outlets::kAnswers},
        {outlets::kLoneAnswer, outlets::kBackground}};
  }
  if (popup.pop_type != kPopTypeGame) {
    return {{outlets::kReject, outlets::kConfirm, outlets::kAnswers, outlets::kLoneAnswer,
             outlets::kReturn, outlets::kRefresh},
            {}};
  }
  ButtonChanges changes{{outlets::kCross, outlets::kConfirm, outlets::kReject, outlets::kAnswers,
                         outlets::kLoneAnswer, outlets::kLoneConfirm},
                        {}};
  if (!needRefresh) {
    changes.show.emplace_back(outlets::kRefresh);
    changes.dimContent = true;
  }
  return changes;
}

bool hasAnswerButtons(const ZOVKPopupModel& popup) {
  return popup.scene == kPolicyScene || popup.scene == kPermissionScene;
}

}  // namespace zovk
