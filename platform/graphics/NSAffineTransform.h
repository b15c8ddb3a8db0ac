#pragma once

#include <memory>

#include "NSGeometry.h"

class NSBezierPath;

/// An affine map of the plane. Building is in prepend order: after translate then rotate, a point is
/// rotated first and translated then. Angles in degrees, counter-clockwise.
class NSAffineTransform {
 public:
  static NSAffineTransform transform() { return {}; }

  void translateXBy_yBy(float dx, float dy);
  void rotateByDegrees(float degrees);

  NSPoint transformPoint(NSPoint point) const;
  std::shared_ptr<NSBezierPath> transformBezierPath(const NSBezierPath& path) const;
  /// Multiplies it onto the current context's matrix: later drawing is in the inner coordinates.
  void concat() const;

 private:
  double a_ = 1, b_ = 0, c_ = 0, d_ = 1, x_ = 0, y_ = 0;  // x' = a x + c y + x_, y' = b x + d y + y_
};
