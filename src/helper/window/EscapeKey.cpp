#include "helper/window/EscapeKey.h"

#include "support/Outlets.h"

namespace zovk::helper {
namespace {

bool canBePressed(GtkWidget* widget, const char* name) {
  return GTK_IS_BUTTON(widget) && gtk_widget_get_mapped(widget) &&
         gtk_widget_is_sensitive(widget) &&
         g_strcmp0(gtk_buildable_get_buildable_id(GTK_BUILDABLE(widget)), name) == 0;
}

/// Searches from the front: while the screen turns, the old layout still lies behind the new one.
GtkWidget* shownButton(GtkWidget* container, const char* name) {
  GtkWidget* child = gtk_widget_get_last_child(container);
  for (; child != nullptr; child = gtk_widget_get_prev_sibling(child)) {
    if (canBePressed(child, name)) return child;
    if (GtkWidget* found = shownButton(child, name)) return found;
  }
  return nullptr;
}

void addKeys(GtkWindow* window, GtkPropagationPhase phase, GCallback pressed, GCallback released,
             gpointer data) {
  GtkEventController* controller = gtk_event_controller_key_new();
  gtk_event_controller_set_propagation_phase(controller, phase);
  g_signal_connect(controller, "key-pressed", pressed, data);
  if (released != nullptr) g_signal_connect(controller, "key-released", released, data);
  gtk_widget_add_controller(GTK_WIDGET(window), controller);
}

}  // namespace

EscapeKey::EscapeKey(GtkWindow* window) {
  addKeys(window, GTK_PHASE_CAPTURE, G_CALLBACK(onPassing), G_CALLBACK(onReleased), this);
  addKeys(window, GTK_PHASE_BUBBLE, G_CALLBACK(onLeftOver), nullptr, this);
  g_signal_connect(window, "notify::is-active", G_CALLBACK(onActiveChanged), this);
}

gboolean EscapeKey::onPassing(GtkEventController* controller, guint key, guint, GdkModifierType,
                              gpointer self) {
  auto* escape = static_cast<EscapeKey*>(self);
  const guint32 time = gtk_event_controller_get_current_event_time(controller);
  // A key that the page does not use comes a second time, with its old time.
  if (key != GDK_KEY_Escape || time == escape->lastTime_) return FALSE;
  escape->lastTime_ = time;
  if (!escape->down_) escape->freshTime_ = time;
  escape->down_ = true;
  return FALSE;
}

void EscapeKey::onReleased(GtkEventController*, guint key, guint, GdkModifierType, gpointer self) {
  if (key == GDK_KEY_Escape) static_cast<EscapeKey*>(self)->down_ = false;
}

void EscapeKey::onActiveChanged(GObject*, GParamSpec*, gpointer self) {
  static_cast<EscapeKey*>(self)->down_ = false;  // the release goes to another window
}

gboolean EscapeKey::onLeftOver(GtkEventController* controller, guint key, guint,
                               GdkModifierType modifiers, gpointer self) {
  const auto* escape = static_cast<EscapeKey*>(self);
  const guint32 time = gtk_event_controller_get_current_event_time(controller);
  const bool plain = (modifiers & gtk_accelerator_get_default_mod_mask()) == 0;
  if (key != GDK_KEY_Escape || !plain || time != escape->freshTime_) return FALSE;
  return pressCornerButton(GTK_WINDOW(gtk_event_controller_get_widget(controller)));
}

bool pressCornerButton(GtkWindow* window) {
  GtkWidget* button = shownButton(GTK_WIDGET(window), outlets::kCross);
  if (button == nullptr) button = shownButton(GTK_WIDGET(window), outlets::kReturn);
  if (button != nullptr) g_signal_emit_by_name(button, "clicked");
  return button != nullptr;
}

}  // namespace zovk::helper
