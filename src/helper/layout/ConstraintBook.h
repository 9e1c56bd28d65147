#pragma once

#include <list>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// One edge of a view pinned to one edge of another.
struct EdgePin {
  GtkWidget* view = nullptr;
  GtkConstraintAttribute edge = GTK_CONSTRAINT_ATTRIBUTE_NONE;
  GtkWidget* to = nullptr;
  GtkConstraintAttribute toEdge = GTK_CONSTRAINT_ATTRIBUTE_NONE;
  double offset = 0;
};

/// Pins edges of views to each other. A new pin of an edge replaces the earlier one, even one from
/// the layout file. The toolkit has constraints only between a container and its children. A view
/// pinned to a view elsewhere in the window follows it with the next arrangement.
class ConstraintBook {
 public:
  void pin(const EdgePin& pin);
  /// Forgets all pins of the view, and all pins to it.
  void remove(GtkWidget* view);
  /// Updates the pins to views elsewhere, after an arrangement.
  void settle();

 private:
  struct Distant {
    EdgePin pin;
    GObjectPtr<GtkConstraint> constraint;
    double constant = 0;
  };
  void follow(Distant& distant);

  std::list<Distant> distant_;
};

}  // namespace zovk::helper
