#include "helper/window/PlayerInput.h"

#include <utility>

namespace zovk::helper {
namespace {

using Acted = std::function<void()>;

gboolean onEvent(GtkEventController*, GdkEvent* event, gpointer acted) {
  switch (gdk_event_get_event_type(event)) {
    case GDK_BUTTON_PRESS:
    case GDK_KEY_PRESS:
    case GDK_TOUCH_BEGIN:
      (*static_cast<Acted*>(acted))();
      break;
    default:
      break;
  }
  return FALSE;
}

void forget(gpointer acted, GClosure*) {
  delete static_cast<Acted*>(acted);
}

}  // namespace

void watchPlayer(GtkWidget* window, Acted acted) {
  GtkEventController* controller = gtk_event_controller_legacy_new();
  gtk_event_controller_set_propagation_phase(controller, GTK_PHASE_CAPTURE);
  g_signal_connect_data(controller, "event", G_CALLBACK(onEvent), new Acted(std::move(acted)),
                        forget, GConnectFlags{});
  gtk_widget_add_controller(window, controller);
}

}  // namespace zovk::helper
