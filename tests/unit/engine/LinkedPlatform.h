#pragma once

#include <memory>

#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

/// The platform that these tests are linked with, in place of the system's: null unless a test puts
/// one here.
std::shared_ptr<HostedPlatform>& linkedPlatform();

}  // namespace zovk
