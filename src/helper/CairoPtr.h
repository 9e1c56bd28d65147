#pragma once

#include <memory>

#include <cairo.h>

namespace zovk::helper {

struct CairoDestroy {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};

using CairoSurface = std::unique_ptr<cairo_surface_t, CairoDestroy>;
using CairoContext = std::unique_ptr<cairo_t, CairoDestroy>;

}  // namespace zovk::helper
