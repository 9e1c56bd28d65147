#include "helper/layout/ConstraintBook.h"

#include <cmath>
#include <functional>
#include <vector>

namespace zovk::helper {
namespace {

GtkConstraintLayout* layoutAround(GtkWidget* view) {
  GtkWidget* parent = gtk_widget_get_parent(view);
  if (parent == nullptr) return nullptr;
  GtkLayoutManager* manager = gtk_widget_get_layout_manager(parent);
  return GTK_IS_CONSTRAINT_LAYOUT(manager) ? GTK_CONSTRAINT_LAYOUT(manager) : nullptr;
}

/// The container itself is written as "none".
GtkWidget* asSource(const EdgePin& pin) {
  return pin.to == gtk_widget_get_parent(pin.view) ? nullptr : pin.to;
}

bool isNear(const EdgePin& pin) {
  GtkWidget* parent = gtk_widget_get_parent(pin.view);
  return pin.to == parent || gtk_widget_get_parent(pin.to) == parent;
}

GtkConstraintAttribute plainEdge(GtkConstraintAttribute edge) {
  if (edge == GTK_CONSTRAINT_ATTRIBUTE_START) return GTK_CONSTRAINT_ATTRIBUTE_LEFT;
  if (edge == GTK_CONSTRAINT_ATTRIBUTE_END) return GTK_CONSTRAINT_ATTRIBUTE_RIGHT;
  return edge;
}

std::vector<GObjectPtr<GtkConstraint>> constraintsOf(GtkConstraintLayout* layout) {
  const auto all = GObjectPtr<GListModel>::adopt(gtk_constraint_layout_observe_constraints(layout));
  std::vector<GObjectPtr<GtkConstraint>> found;
  for (guint i = 0; i < g_list_model_get_n_items(all.get()); ++i) {
    found.push_back(itemOf<GtkConstraint>(all.get(), i));
  }
  return found;
}

/// GTK takes out single constraints only while the container stands in a window, and all of them
/// at any time.
void removeIf(GtkConstraintLayout* layout, const std::function<bool(GtkConstraint*)>& unwanted) {
  auto constraints = constraintsOf(layout);
  const auto before = constraints.size();
  std::erase_if(constraints, [&](const auto& constraint) { return unwanted(constraint.get()); });
  if (constraints.size() == before) return;
  gtk_constraint_layout_remove_all_constraints(layout);
  for (const auto& constraint : constraints) {
    gtk_constraint_layout_add_constraint(
        layout, static_cast<GtkConstraint*>(g_object_ref(constraint.get())));
  }
}

bool concerns(GtkConstraint* constraint, GtkWidget* view) {
  const auto* target = static_cast<const void*>(gtk_constraint_get_target(constraint));
  const auto* source = static_cast<const void*>(gtk_constraint_get_source(constraint));
  return target == view || source == view;
}

void removeTiesOfEdge(GtkConstraintLayout* layout, const EdgePin& pin) {
  removeIf(layout, [&pin](GtkConstraint* constraint) {
    const auto* target = static_cast<const void*>(gtk_constraint_get_target(constraint));
    return target == pin.view &&
           gtk_constraint_get_relation(constraint) == GTK_CONSTRAINT_RELATION_EQ &&
           plainEdge(gtk_constraint_get_target_attribute(constraint)) == pin.edge;
  });
}

/// Returns where the edge lies now that the view is tied to, seen from the container of the view.
double distantPlace(const EdgePin& pin) {
  graphene_rect_t bounds;
  GtkWidget* parent = gtk_widget_get_parent(pin.view);
  if (parent == nullptr || !gtk_widget_compute_bounds(pin.to, parent, &bounds)) return 0;
  const graphene_point_t origin = bounds.origin;
  switch (pin.toEdge) {
    case GTK_CONSTRAINT_ATTRIBUTE_LEFT:
      return origin.x;
    case GTK_CONSTRAINT_ATTRIBUTE_RIGHT:
      return origin.x + bounds.size.width;
    case GTK_CONSTRAINT_ATTRIBUTE_BOTTOM:
      return origin.y + bounds.size.height;
    default:
      return origin.y;
  }
}

/// Returns the container's edge from which a distant place is measured: always the first one.
GtkConstraintAttribute originEdge(GtkConstraintAttribute edge) {
  const bool horizontal =
      edge == GTK_CONSTRAINT_ATTRIBUTE_LEFT || edge == GTK_CONSTRAINT_ATTRIBUTE_RIGHT;
  return horizontal ? GTK_CONSTRAINT_ATTRIBUTE_LEFT : GTK_CONSTRAINT_ATTRIBUTE_TOP;
}

GObjectPtr<GtkConstraint> tie(GtkConstraintLayout* layout, GtkWidget* view,
                              GtkConstraintAttribute edge, GtkWidget* source,
                              GtkConstraintAttribute sourceEdge, double constant) {
  auto constraint = GObjectPtr<GtkConstraint>::retain(
      gtk_constraint_new(view, edge, GTK_CONSTRAINT_RELATION_EQ, source, sourceEdge, 1.0, constant,
                         GTK_CONSTRAINT_STRENGTH_REQUIRED));
  gtk_constraint_layout_add_constraint(layout, constraint.get());  // takes the first reference
  return constraint;
}

}  // namespace

void ConstraintBook::pin(const EdgePin& pin) {
  GtkConstraintLayout* layout = layoutAround(pin.view);
  if (layout == nullptr || pin.view == pin.to) return;
  distant_.remove_if([&pin](const Distant& other) {
    return other.pin.view == pin.view && other.pin.edge == pin.edge;
  });
  removeTiesOfEdge(layout, pin);
  if (isNear(pin)) {
    tie(layout, pin.view, pin.edge, asSource(pin), pin.toEdge, pin.offset);
    return;
  }
  const double constant = distantPlace(pin) + pin.offset;
  distant_.push_back(
      {pin, tie(layout, pin.view, pin.edge, nullptr, originEdge(pin.toEdge), constant), constant});
}

void ConstraintBook::remove(GtkWidget* view) {
  distant_.remove_if(
      [view](const Distant& other) { return other.pin.view == view || other.pin.to == view; });
  if (GtkConstraintLayout* layout = layoutAround(view)) {
    removeIf(layout, [view](GtkConstraint* constraint) { return concerns(constraint, view); });
  }
}

void ConstraintBook::settle() {
  for (Distant& distant : distant_) follow(distant);
}

void ConstraintBook::follow(Distant& distant) {
  GtkConstraintLayout* layout = layoutAround(distant.pin.view);
  const double constant = distantPlace(distant.pin) + distant.pin.offset;
  if (layout == nullptr || std::abs(constant - distant.constant) < 0.5) return;
  removeIf(layout, [&distant](GtkConstraint* constraint) {
    return constraint == distant.constraint.get();
  });
  distant.constraint = tie(layout, distant.pin.view, distant.pin.edge, nullptr,
                           originEdge(distant.pin.toEdge), constant);
  distant.constant = constant;
}

}  // namespace zovk::helper
