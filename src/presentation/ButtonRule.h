#pragma once

#include <string>
#include <vector>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// The changes that one popup makes on the screen. Views that are not named stay unchanged. So
/// views that earlier popups hid stay hidden until the layout is loaded again.
struct ButtonChanges {
  std::vector<std::string> hide;  ///< Names of Outlets.h.
  std::vector<std::string> show;
  bool dimContent = false;  ///< Darkens the page area until the page has loaded.
};

ButtonChanges buttonRule(const ZOVKPopupModel& popup, bool needRefresh);

/// Returns whether the popup is a policy or a permission page, which has answer buttons below it.
bool hasAnswerButtons(const ZOVKPopupModel& popup);

}  // namespace zovk
