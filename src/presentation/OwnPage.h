#pragma once

#include <string>

#include "record/ZOVKPopupModel.h"

namespace zovk {

/// Recognises the address of the popup's own page. The popup may have its address in a form other
/// than the web view's, which is the same in all events. Main thread only.
class OwnPage {
 public:
  /// Reports that the popup's page is about to be loaded from `address`, in the popup's form.
  void willLoad(const std::string& address);
  /// Reports that the web view writes `asked` as `address`. Ignores the loads of pages, and those
  /// of a helper that was started again and loads the page where it was.
  void resolve(const std::string& asked, const std::string& address);
  /// Returns whether `url` leads to the popup's own page.
  bool contains(const ZOVKPopupModel& popup, const std::string& url) const;

 private:
  std::string loaded_;    // as the popup has it
  std::string resolved_;  // as the web view writes it; empty until it said so
};

}  // namespace zovk
