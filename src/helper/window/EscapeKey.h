#pragma once

#include <gtk/gtk.h>

namespace zovk::helper {

/// Lets the escape key press the corner button that is shown: the cross, or else the return. If the
/// page uses the key, the page gets it. Without such a button nothing happens. A key that is held
/// down presses once, so that it does not close a run of popups at once.
class EscapeKey {
 public:
  /// Must live as long as the window receives keys.
  explicit EscapeKey(GtkWindow* window);
  EscapeKey(const EscapeKey&) = delete;
  EscapeKey& operator=(const EscapeKey&) = delete;

 private:
  static gboolean onPassing(GtkEventController* controller, guint key, guint code,
                            GdkModifierType modifiers, gpointer self);
  static void onReleased(GtkEventController* controller, guint key, guint code,
                         GdkModifierType modifiers, gpointer self);
  static gboolean onLeftOver(GtkEventController* controller, guint key, guint code,
                             GdkModifierType modifiers, gpointer self);
  static void onActiveChanged(GObject* window, GParamSpec* property, gpointer self);

  bool down_ = false;
  guint32 lastTime_ = 0;   // of the last press, repeated or not
  guint32 freshTime_ = 0;  // of the last press that was no repetition
};

/// Presses the cross that is shown, or else the return. Returns false if there is neither.
bool pressCornerButton(GtkWindow* window);

}  // namespace zovk::helper
