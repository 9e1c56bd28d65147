#pragma once

#include <webkit/webkit.h>

#include "helper/Drawing.h"

namespace zovk::helper {

/// How the pages of one web view are drawn.
class PageDrawing {
 public:
  PageDrawing(WebKitWebView* view, Drawing drawing) : view_(view), drawing_(drawing) {}

  /// What is behind the pages is to be seen, from now on.
  void letThrough() { seeThrough_ = true; }
  /// Another page takes the place of the one before.
  void pageCame();
  /// The pages' process crashed, perhaps in the graphics driver: the next one does without.
  void crashed();

 private:
  WebKitWebView* view_;
  Drawing drawing_;
  bool seeThrough_ = false;
};

/// For views that are made with these settings. It stays so while their process lives: one that
/// changes its way of drawing sometimes never draws again. Pages that cover what is behind them are
/// right in every way, so without hardware they take the cheapest.
void preparePages(WebKitSettings* settings, Drawing drawing, bool opaque);

/// Whether GL puts together what the view shows.
bool drawsWithGl(WebKitWebView* view);

}  // namespace zovk::helper
