#pragma once

#include "platform/linux/helper/HelperClient.h"

namespace zovk {

/// Hands one event of the helper to whom it concerns. Nothing in it is trusted: what is not as
/// agreed is skipped with one error line, what concerns something that is gone is skipped quietly.
void deliverHelperEvent(HelperClient& session, HelperMessage event);

}  // namespace zovk
