#include "helper/layout/ContainerLayout.h"

namespace zovk::helper {
namespace {

GtkLayoutManagerClass* constraintLayoutClass() {
  return GTK_LAYOUT_MANAGER_CLASS(g_type_class_peek(GTK_TYPE_CONSTRAINT_LAYOUT));
}

void measure(GtkLayoutManager* manager, GtkWidget* widget, GtkOrientation orientation, int forSize,
             int* minimum, int* natural, int* minimumBaseline, int* naturalBaseline) {
  // GTK's own measure tells its solver the sizes of the children. Its result for the container is
  // not always a size: the natural one can be less than the minimum.
  constraintLayoutClass()->measure(manager, widget, orientation, forSize, minimum, natural,
                                   minimumBaseline, naturalBaseline);
  *minimum = 0;
  *natural = 0;
}

void initializeClass(gpointer type, gpointer) {
  GTK_LAYOUT_MANAGER_CLASS(type)->measure = measure;
}

GType registerType() {
  // GTK keeps the structures of the base type to itself, but not their sizes.
  GTypeQuery base;
  g_type_query(GTK_TYPE_CONSTRAINT_LAYOUT, &base);
  g_type_class_ref(GTK_TYPE_CONSTRAINT_LAYOUT);
  return g_type_register_static_simple(GTK_TYPE_CONSTRAINT_LAYOUT, "ZovkLayout", base.class_size,
                                       initializeClass, base.instance_size, nullptr,
                                       static_cast<GTypeFlags>(0));
}

}  // namespace

GType containerLayoutType() {
  static const GType type = registerType();
  return type;
}

}  // namespace zovk::helper
