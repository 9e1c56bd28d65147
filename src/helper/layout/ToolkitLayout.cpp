#include "helper/layout/ToolkitLayout.h"

#include <memory>
#include <utility>

#include "helper/layout/BuilderScope.h"
#include "helper/layout/BundleStyle.h"
#include "helper/layout/ContainerView.h"

namespace zovk::helper {
namespace {

constexpr const char* kRootName = "xibView";

struct ListFree {
  void operator()(GSList* list) const { g_slist_free(list); }
};
using ObjectList = std::unique_ptr<GSList, ListFree>;

ObjectList objectsOf(GtkBuilder* builder) {
  return ObjectList(builder == nullptr ? nullptr : gtk_builder_get_objects(builder));
}

bool canBeRoot(gpointer object) {
  return GTK_IS_WIDGET(object) && !GTK_IS_NATIVE(object) &&
         gtk_widget_get_parent(GTK_WIDGET(object)) == nullptr;
}

/// Returns the constraint layout of the container that a constraint belongs to.
GtkConstraintLayout* layoutFor(GtkConstraint* constraint) {
  GtkConstraintTarget* target = gtk_constraint_get_target(constraint);
  GtkWidget* parent = GTK_IS_WIDGET(target) ? gtk_widget_get_parent(GTK_WIDGET(target)) : nullptr;
  GtkLayoutManager* manager = parent == nullptr ? nullptr : gtk_widget_get_layout_manager(parent);
  return GTK_IS_CONSTRAINT_LAYOUT(manager) ? GTK_CONSTRAINT_LAYOUT(manager) : nullptr;
}

/// Returns whether the constraint pins its target only to the container and its other children.
bool staysInside(GtkConstraint* constraint) {
  GtkConstraintTarget* source = gtk_constraint_get_source(constraint);
  if (!GTK_IS_WIDGET(source)) return source == nullptr;
  auto* target = GTK_WIDGET(gtk_constraint_get_target(constraint));
  return gtk_widget_get_parent(GTK_WIDGET(source)) == gtk_widget_get_parent(target);
}

}  // namespace

ToolkitLayout::ToolkitLayout(const std::string& bundle, const std::string& name,
                             std::function<void(const std::string&)> perform)
    : texts_(bundle) {
  g_type_class_unref(g_type_class_ref(containerViewType()));  // makes the names known
  loadStyles(bundle);
  const auto scope = newActionScope(std::move(perform));
  auto builder = GObjectPtr<GtkBuilder>::adopt(gtk_builder_new());
  gtk_builder_set_scope(builder.get(), scope.get());
  ErrorOut error;
  if (!gtk_builder_add_from_file(builder.get(), (bundle + "/" + name + ".ui").c_str(), error)) {
    error_ = error.message();
    return;
  }
  builder_ = std::move(builder);
  findRoot();
  addLooseConstraints();
  for (const std::string& outlet : outletNames()) texts_.apply(outlet, this->outlet(outlet));
}

ToolkitLayout::~ToolkitLayout() {
  if (root_ && isContainerView(gtk_widget_get_parent(root_.get()))) {
    gtk_widget_unparent(root_.get());
  }
}

GtkWidget* ToolkitLayout::outlet(const std::string& name) const {
  if (!root_) return nullptr;
  GObject* object = gtk_builder_get_object(builder_.get(), name.c_str());
  const bool usable = GTK_IS_WIDGET(object) && !GTK_IS_NATIVE(object);
  return usable ? GTK_WIDGET(object) : nullptr;
}

std::string ToolkitLayout::text(const std::string& name) const {
  return texts_.find(name);
}

std::vector<std::string> ToolkitLayout::outletNames() const {
  std::vector<std::string> names;
  const ObjectList objects = objectsOf(builder_.get());
  for (const GSList* item = objects.get(); item != nullptr; item = item->next) {
    const char* name = GTK_IS_WIDGET(item->data)
                           ? gtk_buildable_get_buildable_id(GTK_BUILDABLE(item->data))
                           : nullptr;
    if (name != nullptr && outlet(name) != nullptr && !g_str_has_prefix(name, "___")) {
      names.emplace_back(name);
    }
  }
  return names;
}

void ToolkitLayout::findRoot() {
  GObject* named = gtk_builder_get_object(builder_.get(), kRootName);
  if (named != nullptr && canBeRoot(named)) {
    root_ = GObjectPtr<GtkWidget>::retain(GTK_WIDGET(named));
    return;
  }
  const ObjectList objects = objectsOf(builder_.get());
  for (const GSList* item = objects.get(); item != nullptr && !root_; item = item->next) {
    if (canBeRoot(item->data)) root_ = GObjectPtr<GtkWidget>::retain(GTK_WIDGET(item->data));
  }
  if (!root_) error_ = "the layout has no view";
}

void ToolkitLayout::addLooseConstraints() {
  // A constraint with its own name is outside of any container in the file.
  const ObjectList objects = objectsOf(builder_.get());
  for (const GSList* item = objects.get(); item != nullptr; item = item->next) {
    if (!GTK_IS_CONSTRAINT(item->data)) continue;
    auto* constraint = GTK_CONSTRAINT(item->data);
    GtkConstraintLayout* layout = layoutFor(constraint);
    if (layout == nullptr || !staysInside(constraint)) continue;
    gtk_constraint_layout_add_constraint(layout, GTK_CONSTRAINT(g_object_ref(constraint)));
  }
}

}  // namespace zovk::helper
