#pragma once

#include "record/ZOVKPopupLoginStateModel.h"
#include "support/Guarded.h"

namespace zovk {

/// The one login state of the engine, shared with the popups on screen: what the host sets while a
/// popup is up reaches that popup's report. All four values are those of one call of the host.
using LoginStateRecord = Guarded<ZOVKPopupLoginStateModel>;

}  // namespace zovk
