// The floor for opening a page: one process, cold, with GTK, a window and a web view of its own.
// Prints a line when the page has loaded, and ends; with a second argument it stays until it is
// ended.
#include <cstdio>

#include <gtk/gtk.h>
#include <webkit/webkit.h>

namespace {

void onLoadChanged(WebKitWebView* /*view*/, WebKitLoadEvent event, gpointer loop) {
  if (event != WEBKIT_LOAD_FINISHED) return;
  std::puts("loaded");
  std::fflush(stdout);
  if (loop != nullptr) g_main_loop_quit(static_cast<GMainLoop*>(loop));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  gtk_init();
  GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
  GtkWidget* const window = gtk_window_new();
  GtkWidget* const view = webkit_web_view_new();
  g_signal_connect(view, "load-changed", G_CALLBACK(onLoadChanged), argc > 2 ? nullptr : loop);
  gtk_window_set_child(GTK_WINDOW(window), view);
  gtk_window_fullscreen(GTK_WINDOW(window));
  gtk_window_present(GTK_WINDOW(window));
  webkit_web_view_load_uri(WEBKIT_WEB_VIEW(view), argv[1]);
  g_main_loop_run(loop);
  g_main_loop_unref(loop);
  return 0;
}
