#include "NSAffineTransform.h"

#include <cairo.h>

#include <cmath>
#include <numbers>

#include "NSBezierPath.h"
#include "NSGraphicsContext.h"

void NSAffineTransform::translateXBy_yBy(float dx, float dy) {
  x_ += a_ * dx + c_ * dy;
  y_ += b_ * dx + d_ * dy;
}

void NSAffineTransform::rotateByDegrees(float degrees) {
  const double radians = degrees * std::numbers::pi / 180;
  const double cosine = std::cos(radians), sine = std::sin(radians);
  const double a = a_, b = b_;
  a_ = a * cosine + c_ * sine;
  b_ = b * cosine + d_ * sine;
  c_ = c_ * cosine - a * sine;
  d_ = d_ * cosine - b * sine;
}

NSPoint NSAffineTransform::transformPoint(NSPoint p) const {
  return {static_cast<float>(a_ * p.x + c_ * p.y + x_), static_cast<float>(b_ * p.x + d_ * p.y + y_)};
}

std::shared_ptr<NSBezierPath> NSAffineTransform::transformBezierPath(const NSBezierPath& path) const {
  return path.mapped([this](NSPoint p) { return transformPoint(p); });
}

void NSAffineTransform::concat() const {
  NSGraphicsContext* context = NSGraphicsContext::currentContext();
  if (!context) return;
  cairo_matrix_t matrix;
  cairo_matrix_init(&matrix, a_, b_, c_, d_, x_, y_);
  cairo_transform(context->cairo(), &matrix);
}
