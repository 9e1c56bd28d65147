#pragma once

#include <webkit/webkit.h>

#include "helper/Drawing.h"

namespace zovk::helper {

/// Decides how the pages of one web view are drawn.
class PageDrawing {
 public:
  PageDrawing(WebKitWebView* view, Drawing drawing) : view_(view), drawing_(drawing) {}

  /// Makes the pages see-through from now on.
  void letThrough() { seeThrough_ = true; }
  /// Reports that another page has replaced the one before.
  void pageCame();
  /// Reports that the page has loaded.
  void pageLoaded();
  /// Reports that the pages' process crashed, perhaps in the graphics driver: the next one does
  /// without the driver.
  void crashed();

 private:
  bool hasPoster() const;

  WebKitWebView* view_;
  Drawing drawing_;
  bool seeThrough_ = false;
  bool hadPage_ = false;
};

/// Prepares the settings of new views. The way of drawing stays while their process lives: a
/// process that changes it sometimes never draws again. Pages that cover everything behind them are
/// right in every way, so without hardware they take the cheapest.
void preparePages(WebKitSettings* settings, Drawing drawing, bool opaque);

/// Returns whether GL composes the view's picture.
bool drawsWithGl(WebKitWebView* view);

}  // namespace zovk::helper
