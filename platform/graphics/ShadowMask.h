#pragma once

#include "CairoHandles.h"
#include "NSGeometry.h"

/// The coverage of one shape in device pixels, and its blurred form.
class ShadowMask {
 public:
  /// For a shape within `extents` (in the target's current coordinates), as far as its shadow is seen through
  /// the target's clip. `physicalOffset` grows upwards; `physicalBlurRadius` r is a Gaussian of sigma r / 2.
  ShadowMask(cairo_t* target, NSRect extents, NSSize physicalOffset, float physicalBlurRadius);

  /// Nothing of it can be seen: there is nothing to draw to.
  bool isEmpty() const { return !surface_; }
  /// Draws to the mask with the target's matrix.
  cairo_t* cairo() const { return cairo_.get(); }
  cairo_surface_t* surface() const { return surface_.get(); }
  /// Where the mask's upper left pixel lies on the target.
  int physicalX() const { return x_; }
  int physicalY() const { return y_; }

  void blur();

 private:
  float sigma_;
  int x_ = 0, y_ = 0;
  graphics::SurfacePtr surface_;
  graphics::CairoPtr cairo_;
};
