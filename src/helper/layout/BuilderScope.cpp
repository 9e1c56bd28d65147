#include "helper/layout/BuilderScope.h"

#include <memory>
#include <utility>

namespace {

using Perform = std::function<void(const std::string&)>;

struct ZovkActionScope {
  GtkBuilderCScope parent;
  std::shared_ptr<Perform>* perform;
};

struct ZovkActionScopeClass {
  GtkBuilderCScopeClass parentClass;
};

struct BoundAction {
  std::shared_ptr<Perform> perform;
  std::string name;
};

/// Runs the action whatever arguments the signal brings.
void runAction(GClosure* closure, GValue*, guint, const GValue*, gpointer, gpointer) {
  const auto* action = static_cast<const BoundAction*>(closure->data);
  (*action->perform)(action->name);
}

void zovk_action_scope_interface_init(GtkBuilderScopeInterface* type);

G_DEFINE_TYPE_WITH_CODE(ZovkActionScope, zovk_action_scope, GTK_TYPE_BUILDER_CSCOPE,
                        G_IMPLEMENT_INTERFACE(GTK_TYPE_BUILDER_SCOPE,
                                              zovk_action_scope_interface_init))

GClosure* createClosure(GtkBuilderScope* scope, GtkBuilder*, const char* name,
                        GtkBuilderClosureFlags, GObject*, GError**) {
  const auto* self = reinterpret_cast<ZovkActionScope*>(scope);
  auto action = std::make_unique<BoundAction>(BoundAction{*self->perform, name});
  GClosure* closure = g_closure_new_simple(sizeof(GClosure), action.get());
  g_closure_add_finalize_notifier(closure, action.release(), [](gpointer data, GClosure*) {
    delete static_cast<BoundAction*>(data);
  });
  g_closure_set_marshal(closure, runAction);
  return closure;
}

void zovk_action_scope_interface_init(GtkBuilderScopeInterface* type) {
  type->create_closure = createClosure;
}

void zovk_action_scope_finalize(GObject* object) {
  delete reinterpret_cast<ZovkActionScope*>(object)->perform;
  G_OBJECT_CLASS(zovk_action_scope_parent_class)->finalize(object);
}

void zovk_action_scope_class_init(ZovkActionScopeClass* type) {
  G_OBJECT_CLASS(type)->finalize = zovk_action_scope_finalize;
}

void zovk_action_scope_init(ZovkActionScope*) {}

}  // namespace

namespace zovk::helper {

GObjectPtr<GtkBuilderScope> newActionScope(std::function<void(const std::string&)> perform) {
  auto* scope = static_cast<ZovkActionScope*>(g_object_new(zovk_action_scope_get_type(), nullptr));
  scope->perform = new std::shared_ptr<Perform>(std::make_shared<Perform>(std::move(perform)));
  return GObjectPtr<GtkBuilderScope>::adopt(GTK_BUILDER_SCOPE(scope));
}

}  // namespace zovk::helper
