#include "webhost/ViewStyle.h"

#include <filesystem>
#include <system_error>

#include <webkit/webkit.h>

#include "webhost/GObjectPtr.h"
#include "webhost/StylePriority.h"

namespace zovk {
namespace {

constexpr const char* kBackgroundKey = "zovk-background";
constexpr const char* kImageKey = "zovk-image";

GtkCssProvider* backgroundProvider(GtkWidget* widget) {
  auto* provider =
      static_cast<GtkCssProvider*>(g_object_get_data(G_OBJECT(widget), kBackgroundKey));
  if (provider != nullptr) return provider;
  provider = gtk_css_provider_new();
  g_object_set_data_full(G_OBJECT(widget), kBackgroundKey, provider, g_object_unref);
  gtk_style_context_add_provider(gtk_widget_get_style_context(widget), GTK_STYLE_PROVIDER(provider),
                                 kEngineStylePriority);
  return provider;
}

bool isThere(const std::string& path) {
  std::error_code tooLong;
  return std::filesystem::exists(path, tooLong);
}

std::string finePath(const std::filesystem::path& path) {
  return (path.parent_path() / (path.stem().string() + "@2x" + path.extension().string())).string();
}

GObjectPtr<GdkTexture> textureOf(const std::string& path) {
  ErrorOut error;
  return GObjectPtr<GdkTexture>::adopt(gdk_texture_new_from_filename(path.c_str(), error));
}

void showImage(GtkButton* button, const std::string& path) {
  const bool fine = gtk_widget_get_scale_factor(GTK_WIDGET(button)) >= 2 && isThere(finePath(path));
  const GObjectPtr<GdkTexture> texture = textureOf(fine ? finePath(path) : path);
  if (!texture) return gtk_button_set_child(button, nullptr);
  const int scale = fine ? 2 : 1;
  GtkWidget* picture = gtk_picture_new_for_paintable(GDK_PAINTABLE(texture.get()));
  gtk_widget_set_size_request(picture, gdk_texture_get_width(texture.get()) / scale,
                              gdk_texture_get_height(texture.get()) / scale);
  gtk_widget_set_halign(picture, GTK_ALIGN_CENTER);
  gtk_widget_set_valign(picture, GTK_ALIGN_CENTER);
  gtk_button_set_child(button, picture);
}

void onScaleChanged(GtkButton* button) {
  showImage(button, static_cast<const char*>(g_object_get_data(G_OBJECT(button), kImageKey)));
}

}  // namespace

void setBackground(GtkWidget* widget, const GdkRGBA& color) {
  if (WEBKIT_IS_WEB_VIEW(widget)) {
    return webkit_web_view_set_background_color(WEBKIT_WEB_VIEW(widget), &color);
  }
  const GText text(gdk_rgba_to_string(&color));
  const std::string style =
      std::string("* { background-image: none; background-color: ") + text.get() + "; }";
  gtk_css_provider_load_from_data(backgroundProvider(widget), style.c_str(), -1);
}

void setButtonImage(GtkWidget* widget, const std::string& path) {
  if (!GTK_IS_BUTTON(widget)) return;
  if (g_object_get_data(G_OBJECT(widget), kImageKey) == nullptr) {
    g_signal_connect(widget, "notify::scale-factor", G_CALLBACK(onScaleChanged), nullptr);
  }
  g_object_set_data_full(G_OBJECT(widget), kImageKey, g_strdup(path.c_str()), g_free);
  showImage(GTK_BUTTON(widget), path);
}

}  // namespace zovk
