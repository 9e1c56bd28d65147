#include "helper/layout/DesktopTheme.h"

#include <string>

#include "helper/GObjectPtr.h"

namespace zovk::helper {
namespace {

constexpr const char* kDark = "gtk-application-prefer-dark-theme";
constexpr const char* kTheme = "gtk-theme-name";
constexpr const char* kHighContrastClass = "high-contrast";

/// Returns null if the desktop has no such setting.
GObjectPtr<GSettings> settingsWith(const char* id, const char* key) {
  GSettingsSchemaSource* source = g_settings_schema_source_get_default();
  GSettingsSchema* schema =
      source == nullptr ? nullptr : g_settings_schema_source_lookup(source, id, TRUE);
  if (schema == nullptr) return {};
  const bool known = g_settings_schema_has_key(schema, key) == TRUE;
  g_settings_schema_unref(schema);
  return known ? GObjectPtr<GSettings>::adopt(g_settings_new(id)) : GObjectPtr<GSettings>();
}

struct Desktop {
  GObjectPtr<GSettings> look = settingsWith("org.gnome.desktop.interface", "color-scheme");
  GObjectPtr<GSettings> access = settingsWith("org.gnome.desktop.a11y.interface", "high-contrast");
};

void applyColorScheme(GSettings* look) {
  GtkSettings* toolkit = gtk_settings_get_default();
  const GText scheme(g_settings_get_string(look, "color-scheme"));
  if (g_str_equal(scheme.get(), "default")) return gtk_settings_reset_property(toolkit, kDark);
  g_object_set(toolkit, kDark, g_str_equal(scheme.get(), "prefer-dark"), nullptr);
}

/// The themes of high contrast decide themselves whether they are light or dark.
void applyContrast(GSettings* access) {
  GtkSettings* toolkit = gtk_settings_get_default();
  if (!g_settings_get_boolean(access, "high-contrast")) {
    return gtk_settings_reset_property(toolkit, kTheme);
  }
  gboolean dark = FALSE;
  g_object_get(toolkit, kDark, &dark, nullptr);
  g_object_set(toolkit, kTheme, dark ? "Default-hc-dark" : "Default-hc", nullptr);
}

void apply(const Desktop* desktop) {
  if (desktop->look) applyColorScheme(desktop->look.get());
  if (desktop->access) applyContrast(desktop->access.get());
}

bool isHighContrast() {
  gchar* name = nullptr;
  g_object_get(gtk_settings_get_default(), kTheme, &name, nullptr);
  const GText owned(name);
  const char* forced = g_getenv("GTK_THEME");
  const std::string theme = forced != nullptr ? forced : name != nullptr ? name : "";
  return theme.find("HighContrast") != std::string::npos || theme.find("-hc") != std::string::npos;
}

void onThemeChanged(GtkWidget* window) {
  const bool contrast = isHighContrast();
  (contrast ? gtk_widget_add_css_class : gtk_widget_remove_css_class)(window, kHighContrastClass);
}

}  // namespace

void followDesktopTheme() {
  static Desktop desktop;
  for (GSettings* settings : {desktop.look.get(), desktop.access.get()}) {
    if (settings == nullptr) continue;
    g_signal_connect_swapped(settings, "changed", G_CALLBACK(apply), &desktop);
  }
  apply(&desktop);
}

void markHighContrast(GtkWindow* window) {
  g_signal_connect_object(gtk_settings_get_default(), "notify::gtk-theme-name",
                          G_CALLBACK(onThemeChanged), window, G_CONNECT_SWAPPED);
  onThemeChanged(GTK_WIDGET(window));
}

}  // namespace zovk::helper
