#pragma once

#include <cstdint>
#include <vector>

#include "Bitmap.h"
#include "PixelRect.h"
#include "X11Headers.h"

/// Cuts a window out along what is at least half opaque, for translucent windows without a compositor. What
/// remains is shown in its full colours, since nothing shines through.
class X11ShapeMask {
 public:
  /// What is shown of a premultiplied pixel.
  static uint32_t solid(uint32_t pixel);
  /// Takes part of the bitmap over into the mask.
  void mark(const Bitmap& bitmap, PixelRect area);
  /// Gives the window its shape if it changed.
  void apply(XConnection* x, Window window);

 private:
  std::vector<XRectangle> rectangles() const;

  int width_ = 0;
  int height_ = 0;
  std::vector<uint8_t> solid_;  // a byte a pixel
  bool changed_ = false;
};
