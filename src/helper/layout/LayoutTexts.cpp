#include "helper/layout/LayoutTexts.h"

#include "helper/GObjectPtr.h"

namespace zovk::helper {
namespace {

constexpr const char* kFile = "/ZOVKPopupTexts.ini";
constexpr const char* kLabel = "label";

void setText(GtkWidget* view, const char* text) {
  if (GTK_IS_LABEL(view)) return gtk_label_set_text(GTK_LABEL(view), text);
  if (!GTK_IS_BUTTON(view)) return;
  const bool says = gtk_button_get_label(GTK_BUTTON(view)) != nullptr;
  if (says) return gtk_button_set_label(GTK_BUTTON(view), text);
  gtk_widget_set_tooltip_text(view, text);
}

}  // namespace

LayoutTexts::LayoutTexts(const std::string& bundle) : file_(g_key_file_new()) {
  g_key_file_load_from_file(file_, (bundle + kFile).c_str(), G_KEY_FILE_NONE, nullptr);
}

LayoutTexts::~LayoutTexts() {
  g_key_file_unref(file_);
}

void LayoutTexts::apply(const std::string& name, GtkWidget* view) const {
  const GText text(g_key_file_get_locale_string(file_, name.c_str(), kLabel, nullptr, nullptr));
  if (!text) return;
  setText(view, text.get());
  gtk_accessible_update_property(GTK_ACCESSIBLE(view), GTK_ACCESSIBLE_PROPERTY_LABEL, text.get(),
                                 -1);
}

std::string LayoutTexts::find(const std::string& name) const {
  const GText text(g_key_file_get_locale_string(file_, name.c_str(), kLabel, nullptr, nullptr));
  return text ? text.get() : "";
}

}  // namespace zovk::helper
