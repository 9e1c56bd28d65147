#pragma once

#include "record/ZOVKPopupLoginStateModel.h"
#include "support/Guarded.h"

namespace zovk {

/// The only login state of the engine, shared with the popups on screen. So a login that the host
/// sets while a popup is up reaches that popup's report. All four values are of one call of the
/// host.
using LoginStateRecord = Guarded<ZOVKPopupLoginStateModel>;

}  // namespace zovk
