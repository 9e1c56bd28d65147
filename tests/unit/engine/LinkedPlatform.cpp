#include "unit/engine/LinkedPlatform.h"

namespace zovk {

std::shared_ptr<HostedPlatform>& linkedPlatform() {
  static std::shared_ptr<HostedPlatform> platform;
  return platform;
}

std::shared_ptr<HostedPlatform> makeDefaultPlatform(const ZOVKPopupHostSettings& /*settings*/) {
  return linkedPlatform();
}

}  // namespace zovk
