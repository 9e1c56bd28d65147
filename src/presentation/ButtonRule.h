#pragma once

#include <vector>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// What one popup changes on the screen. Views that are not named stay as they are, so a popup
/// inherits what the popups before it left hidden until the layout is loaded anew.
struct ButtonChanges {
  std::vector<const char*> hide;  ///< Names of Outlets.h.
  std::vector<const char*> show;
  bool dimContent = false;  ///< Darkens the page area until the page has loaded.
};

ButtonChanges buttonRule(const ZOVKPopupModel& popup, bool needRefresh);

/// Whether the popup is a policy or a permission page, which has answer buttons below it.
bool hasAnswerButtons(const ZOVKPopupModel& popup);

}  // namespace zovk
