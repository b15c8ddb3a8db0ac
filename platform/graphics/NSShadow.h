#pragma once

#include <memory>

#include "NSColor.h"
#include "NSGeometry.h"

/// The shadow that drawing throws while it is in force. Offset and blur radius are in points of the
/// unscaled, unrotated window or image: offset (0, −1) is always one point down. A blur radius r is a
/// Gaussian of sigma r / 2; 0 is a hard copy.
class NSShadow {
 public:
  void setShadowOffset(NSSize offset) { offset_ = offset; }
  void setShadowBlurRadius(float radius) { blurRadius_ = radius; }
  void setShadowColor(std::shared_ptr<NSColor> color) { color_ = std::move(color); }

  NSSize shadowOffset() const { return offset_; }
  float shadowBlurRadius() const { return blurRadius_; }
  const std::shared_ptr<NSColor>& shadowColor() const { return color_; }

  /// In force from now until the graphics state is restored.
  void set() const;

 private:
  NSSize offset_;
  float blurRadius_ = 0;
  std::shared_ptr<NSColor> color_ = NSColor::colorWithCalibratedWhite_alpha(0, 1.0f / 3);
};
