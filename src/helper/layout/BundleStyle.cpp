#include "helper/layout/BundleStyle.h"

#include <filesystem>
#include <set>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"
#include "helper/layout/StylePriority.h"

namespace zovk::helper {
namespace {

constexpr const char* kOwnSheet = "/ZOVKPopupView.css";
constexpr const char* kStudioSheet = "/ZOVKPopupStyle.css";

void loadSheet(const std::string& path, guint priority) {
  static std::set<std::string> loaded;
  std::error_code ignored;
  if (!std::filesystem::exists(path, ignored) || !loaded.insert(path).second) return;
  const auto provider = GObjectPtr<GtkCssProvider>::adopt(gtk_css_provider_new());
  gtk_css_provider_load_from_path(provider.get(), path.c_str());
  gtk_style_context_add_provider_for_display(gdk_display_get_default(),
                                             GTK_STYLE_PROVIDER(provider.get()), priority);
}

}  // namespace

void loadStyles(const std::string& bundle) {
  loadSheet(bundle + kOwnSheet, kOwnStylePriority);
  loadSheet(bundle + kStudioSheet, kStudioStylePriority);
}

}  // namespace zovk::helper
