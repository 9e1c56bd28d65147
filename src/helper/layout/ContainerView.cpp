#include "helper/layout/ContainerView.h"

#include "helper/layout/ContainerLayout.h"

namespace {

struct ZovkView {
  GtkWidget parent;
};

struct ZovkViewClass {
  GtkWidgetClass parentClass;
};

G_DEFINE_TYPE(ZovkView, zovk_view, GTK_TYPE_WIDGET)

void zovk_view_dispose(GObject* object) {
  while (GtkWidget* child = gtk_widget_get_first_child(GTK_WIDGET(object))) {
    gtk_widget_unparent(child);
  }
  G_OBJECT_CLASS(zovk_view_parent_class)->dispose(object);
}

void zovk_view_class_init(ZovkViewClass* type) {
  G_OBJECT_CLASS(type)->dispose = zovk_view_dispose;
  gtk_widget_class_set_layout_manager_type(GTK_WIDGET_CLASS(type),
                                           zovk::helper::containerLayoutType());
  gtk_widget_class_set_css_name(GTK_WIDGET_CLASS(type), "view");
}

void zovk_view_init(ZovkView*) {}

}  // namespace

namespace zovk::helper {

GType containerViewType() {
  return zovk_view_get_type();
}

GtkWidget* newContainerView() {
  return GTK_WIDGET(g_object_new(containerViewType(), nullptr));
}

bool isContainerView(GtkWidget* widget) {
  return G_TYPE_CHECK_INSTANCE_TYPE(widget, containerViewType());
}

}  // namespace zovk::helper
