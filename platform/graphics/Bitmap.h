#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>

#include "CairoHandles.h"
#include "NSGeometry.h"

/// Pixels with a scale: `size` in logical points, physical pixels = points × scale, rounded up.
/// Premultiplied ARGB, the first row at the top. Starts transparent. Move-only.
class Bitmap {
 public:
  Bitmap(NSSize size, float scale);
  /// From a PNG file whose pixels are `scale` to a point; throws std::runtime_error with the file's name
  /// when it cannot be read.
  static Bitmap fromPng(const std::string& file, float scale);

  NSSize size() const { return size_; }
  float scale() const { return scale_; }
  int physicalWidth() const;
  int physicalHeight() const;
  cairo_surface_t* surface() const { return surface_.get(); }

  /// Straight (not premultiplied) red, green, blue, alpha of one physical pixel, (0, 0) at the top left.
  std::array<uint8_t, 4> pixel(int physicalX, int physicalY) const;
  /// A row of physicalWidth() pixels, premultiplied, alpha in the highest byte and blue in the lowest.
  std::span<const uint32_t> row(int physicalY) const;

  /// Throws std::runtime_error with the file's name when it cannot be written.
  void writePng(const std::string& file) const;

 private:
  Bitmap(graphics::SurfacePtr surface, NSSize size, float scale);

  graphics::SurfacePtr surface_;
  NSSize size_;
  float scale_;
};
