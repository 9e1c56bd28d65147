#pragma once

#include <webkit/webkit.h>

#include "helper/CairoPtr.h"
#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// Stands for a see-through page until the engine has composed its picture, which takes longer than
/// to load the page where GL is software. The page's process paints it at once when it is asked.
class Poster {
 public:
  explicit Poster(GtkWidget* view) : view_(view) {}
  ~Poster() { drop(); }
  Poster(const Poster&) = delete;
  Poster& operator=(const Poster&) = delete;

  /// Asks the page of `view_`, a web view that has just come to a page. The answer is taken only if
  /// the page had loaded completely by then, which small ones have.
  void askEarly();
  /// Asks the page, which has loaded, unless an early answer was taken or is still to come.
  void ask();
  void hang(GdkTexture* picture);
  /// Gives it up, and what was asked for.
  void drop();
  bool hangs() const { return picture_ != nullptr; }
  /// Returns whether it was asked for a moment ago and has not come.
  bool isExpected() const { return awaited_ && moment_.active(); }
  /// Paints it if there is nothing in the engine's own picture, which may be null. Otherwise it is
  /// given up, as it is when the view has another size.
  bool paint(GskRenderNode* own, GtkSnapshot* target);

 private:
  void begin();
  void askForPicture();
  static void onState(GObject* view, GAsyncResult* result, gpointer self);
  static void onPainted(GObject* view, GAsyncResult* result, gpointer self);
  static gboolean onLate(gpointer self);
  static gboolean onOver(gpointer self);
  bool isOfSize(GdkTexture* picture) const;
  bool isLaidOut() const;
  bool fits() const;

  GtkWidget* view_;
  GObjectPtr<GCancellable> asked_;
  CairoSurface picture_;
  bool awaited_ = false;  // what was asked for has not been answered
  bool loaded_ = false;   // the page had loaded before it was painted
  bool again_ = false;    // the page has loaded meanwhile
  int width_ = 0;
  int height_ = 0;
  SourceGuard moment_;
  SourceGuard over_;
};

}  // namespace zovk::helper
