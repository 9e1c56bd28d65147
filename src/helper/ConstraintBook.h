#pragma once

#include <list>

#include <gtk/gtk.h>

#include "helper/GObjectPtr.h"

namespace zovk::helper {

/// One edge of a view tied to one edge of another.
struct EdgePin {
  GtkWidget* view = nullptr;
  GtkConstraintAttribute edge = GTK_CONSTRAINT_ATTRIBUTE_NONE;
  GtkWidget* to = nullptr;
  GtkConstraintAttribute toEdge = GTK_CONSTRAINT_ATTRIBUTE_NONE;
  double offset = 0;
};

/// Ties edges of views together. A new tie of an edge takes the place of the earlier one, also of
/// the one that the layout file gave it. The toolkit knows constraints between a container and its
/// children only; a tie to a view elsewhere in the window follows it from one arrangement to the
/// next.
class ConstraintBook {
 public:
  void pin(const EdgePin& pin);
  /// Forgets every tie of the view, and to it.
  void remove(GtkWidget* view);
  /// Lets the ties to views elsewhere follow, after an arrangement.
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
