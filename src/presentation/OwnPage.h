#pragma once

#include <string>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// The page of the popup on screen, as addresses tell it from others. The popup may have its
/// address in another form than the web view, which gives every address in the same one. Main
/// thread only.
class OwnPage {
 public:
  /// The popup's page is loaded from `address`, in the popup's form.
  void willLoad(const std::string& address);
  /// The web view wrote `asked` as `address`. Pages have addresses loaded, too, and a helper that
  /// was started again loads where the page was: those are passed over.
  void resolve(const std::string& asked, const std::string& address);
  /// Whether `url` leads to the popup's own page.
  bool contains(const ZOVKPopupModel& popup, const std::string& url) const;

 private:
  std::string loaded_;    // as the popup has it
  std::string resolved_;  // as the web view writes it; empty until it said so
};

}  // namespace zovk
