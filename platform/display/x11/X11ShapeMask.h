#pragma once

#include <cstdint>
#include <vector>

#include "X11Surface.h"

/// Cuts a window out along what is at least half opaque, for translucent windows without a compositor. What
/// remains is shown in its full colours, since nothing shines through.
class X11ShapeMask {
 public:
  /// Takes part of the bitmap over into the surface and the mask.
  void copy(const Bitmap& bitmap, PixelRect area, X11Surface& surface);
  /// Gives the window its shape if it changed.
  void apply(XConnection* x, Window window);

 private:
  std::vector<XRectangle> rectangles() const;

  int width_ = 0;
  int height_ = 0;
  std::vector<uint8_t> solid_;  // a byte a pixel
  bool changed_ = false;
};
