#include "presentation/OwnPage.h"

#include <utility>

#include "presentation/PageAddress.h"

namespace zovk {

void OwnPage::willLoad(const std::string& address) {
  if (std::exchange(loaded_, address) != address) resolved_.clear();
}

void OwnPage::resolve(const std::string& asked, const std::string& address) {
  if (asked == loaded_) resolved_ = address;
}

bool OwnPage::contains(const ZOVKPopupModel& popup, const std::string& url) const {
  const std::string own = ownPagePrefix(popup);
  const bool isResolved = !resolved_.empty() && withoutQuery(loaded_) == own;
  return url.starts_with(isResolved ? withoutQuery(resolved_) : own);
}

}  // namespace zovk
