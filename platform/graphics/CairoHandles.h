#pragma once

#include <memory>

// cairo's types by name only, so that what includes this layer's headers needs no cairo header.
typedef struct _cairo cairo_t;
typedef struct _cairo_surface cairo_surface_t;

namespace graphics {

struct SurfaceDeleter {
  void operator()(cairo_surface_t* surface) const;
};
struct CairoDeleter {
  void operator()(cairo_t* cairo) const;
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
using CairoPtr = std::unique_ptr<cairo_t, CairoDeleter>;

}  // namespace graphics
