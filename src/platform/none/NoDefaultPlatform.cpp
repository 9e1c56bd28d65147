#include "zovkpopup/platform/HostedPlatform.h"

namespace zovk {

std::shared_ptr<HostedPlatform> makeDefaultPlatform(const ZOVKPopupHostSettings& /*settings*/) {
  return nullptr;
}

}  // namespace zovk
