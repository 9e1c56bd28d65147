#include "helper/layout/ViewStyle.h"

#include <filesystem>
#include <system_error>

#include "helper/GObjectPtr.h"
#include "helper/layout/StylePriority.h"

namespace zovk::helper {
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

/// A picture that is `scale` times finer than the screen's lengths, at its own size. A view that is
/// asked for that size would take it for the least size.
GObjectPtr<GdkPaintable> sized(GdkTexture* texture, int scale) {
  const auto width = static_cast<float>(gdk_texture_get_width(texture));
  const auto height = static_cast<float>(gdk_texture_get_height(texture));
  const auto finer = static_cast<float>(scale);
  graphene_rect_t place;
  graphene_rect_init(&place, 0, 0, width / finer, height / finer);
  GtkSnapshot* picture = gtk_snapshot_new();
  gtk_snapshot_append_texture(picture, texture, &place);
  return GObjectPtr<GdkPaintable>::adopt(gtk_snapshot_free_to_paintable(picture, &place.size));
}

void showImage(GtkButton* button, const std::string& path) {
  const bool fine = gtk_widget_get_scale_factor(GTK_WIDGET(button)) >= 2 && isThere(finePath(path));
  const GObjectPtr<GdkTexture> texture = textureOf(fine ? finePath(path) : path);
  if (!texture) return gtk_button_set_child(button, nullptr);
  GtkWidget* picture = gtk_picture_new_for_paintable(sized(texture.get(), fine ? 2 : 1).get());
  gtk_picture_set_can_shrink(GTK_PICTURE(picture), FALSE);
  gtk_widget_set_halign(picture, GTK_ALIGN_CENTER);
  gtk_widget_set_valign(picture, GTK_ALIGN_CENTER);
  gtk_button_set_child(button, picture);
}

void onScaleChanged(GtkButton* button) {
  showImage(button, static_cast<const char*>(g_object_get_data(G_OBJECT(button), kImageKey)));
}

}  // namespace

void setBackground(GtkWidget* widget, const GdkRGBA& color) {
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

}  // namespace zovk::helper
