#include "helper/layout/TabOrder.h"

#include <webkit/webkit.h>

namespace zovk::helper {
namespace {

constexpr const char* kLastPress = "zovk-last-tab";

/// When a page has no more place for the focus, the engine moves the focus to the next widget and
/// then delivers the key again, with its old time, to that widget. That second one must not move
/// the focus once more.
gboolean onKey(GtkEventController* controller, guint key, guint, GdkModifierType, gpointer) {
  if (key != GDK_KEY_Tab && key != GDK_KEY_ISO_Left_Tab) return FALSE;
  gpointer time = GUINT_TO_POINTER(gtk_event_controller_get_current_event_time(controller));
  const bool again = time != nullptr && g_object_get_data(G_OBJECT(controller), kLastPress) == time;
  g_object_set_data(G_OBJECT(controller), kLastPress, time);
  auto* window = GTK_WINDOW(gtk_event_controller_get_widget(controller));
  gtk_window_set_focus_visible(window, TRUE);
  return again && !WEBKIT_IS_WEB_VIEW(gtk_window_get_focus(window));
}

}  // namespace

void keepTabSteps(GtkWindow* window) {
  GtkEventController* controller = gtk_event_controller_key_new();
  gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_CAPTURE);
  g_signal_connect(controller, "key-pressed", G_CALLBACK(onKey), nullptr);
  gtk_widget_add_controller(GTK_WIDGET(window), controller);
}

}  // namespace zovk::helper
