#pragma once

#include <webkit/webkit.h>

#include "helper/GObjectPtr.h"
#include "helper/window/Screen.h"

namespace zovk::helper {

/// A web view that waits for its page, in a window that is never shown. It takes itself for
/// visible, so its process has set up all that it draws with, for the size that is to be expected,
/// before a page needs it.
class SpareView {
 public:
  SpareView();
  ~SpareView();
  SpareView(const SpareView&) = delete;
  SpareView& operator=(const SpareView&) = delete;

  GtkWidget* window() const { return GTK_WIDGET(window_); }
  bool isThere() const { return static_cast<bool>(view_); }
  void put(GObjectPtr<WebKitWebView> view, const Frame& size);
  /// Returns the view, which is in no window then; nothing if there is none.
  GObjectPtr<WebKitWebView> take();

 private:
  GtkWindow* window_;
  GObjectPtr<WebKitWebView> view_;
};

}  // namespace zovk::helper
