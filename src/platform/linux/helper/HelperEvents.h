#pragma once

#include "platform/linux/helper/HelperClient.h"

namespace zovk {

/// Delivers one event of the helper to its receiver. Nothing in it is trusted: an ill-formed event
/// is skipped with one error line, and an event about an object that is gone is skipped silently.
void deliverHelperEvent(HelperClient& session, HelperMessage event);

}  // namespace zovk
