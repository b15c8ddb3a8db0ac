#include "NSBezierPath.h"

#include <cairo.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "NSGraphicsContext.h"
#include "NSLog.h"

namespace {

constexpr float farthest = 16000;
// A dense outline goes up and down over its height that often.
constexpr float denseHeights = 50;

bool isNumber(NSPoint p) {
  return !std::isnan(p.x) && !std::isnan(p.y);
}

NSPoint clamped(NSPoint p) {
  const NSPoint inside{std::clamp(p.x, -farthest, farthest), std::clamp(p.y, -farthest, farthest)};
  if (!(inside == p)) NSLogOnce("NSBezierPath: a coordinate beyond 16000 points was clamped");
  return inside;
}

}  // namespace

std::shared_ptr<NSBezierPath> NSBezierPath::bezierPath() {
  return std::make_shared<NSBezierPath>();
}

std::shared_ptr<NSBezierPath> NSBezierPath::bezierPathWithRect(NSRect rect) {
  auto path = bezierPath();
  path->moveToPoint({NSMinX(rect), NSMinY(rect)});
  path->lineToPoint({NSMaxX(rect), NSMinY(rect)});
  path->lineToPoint({NSMaxX(rect), NSMaxY(rect)});
  path->lineToPoint({NSMinX(rect), NSMaxY(rect)});
  path->closePath();
  return path;
}

std::shared_ptr<NSBezierPath> NSBezierPath::bezierPathWithOvalInRect(NSRect rect) {
  auto circle = bezierPath();
  circle->appendBezierPathWithArcWithCenter_radius_startAngle_endAngle({0, 0}, 1, 0, 360);
  circle->closePath();
  const float rx = rect.size.width / 2, ry = rect.size.height / 2;
  return circle->mapped([=](NSPoint p) {
    return NSPoint{rect.origin.x + rx + p.x * rx, rect.origin.y + ry + p.y * ry};
  });
}

void NSBezierPath::fillRect(NSRect rect) {
  if (!NSIsEmptyRect(rect)) bezierPathWithRect(rect)->fill();
}

void NSBezierPath::append(Kind kind, NSPoint a, NSPoint b, NSPoint c) {
  if (!isNumber(a) || !isNumber(b) || !isNumber(c)) {
    NSLogOnce("NSBezierPath: a point that is not a number was dropped");
    return;
  }
  elements_.push_back({kind, {clamped(a), clamped(b), clamped(c)}});
}

void NSBezierPath::moveToPoint(NSPoint point) {
  append(Kind::move, point);
}

void NSBezierPath::lineToPoint(NSPoint point) {
  append(elements_.empty() ? Kind::move : Kind::line, point);
}

void NSBezierPath::curveToPoint_controlPoint1_controlPoint2(NSPoint point, NSPoint control1,
                                                            NSPoint control2) {
  if (elements_.empty()) moveToPoint(control1);
  append(Kind::curve, control1, control2, point);
}

void NSBezierPath::closePath() {
  if (!elements_.empty()) elements_.push_back({Kind::close, {}});
}

void NSBezierPath::appendBezierPathWithArcWithCenter_radius_startAngle_endAngle_clockwise(
    NSPoint center, float radius, float startAngle, float endAngle, bool clockwise) {
  if (!std::isfinite(startAngle) || !std::isfinite(endAngle) || !std::isfinite(radius)) {
    NSLogOnce("NSBezierPath: an arc without finite angles and radius was dropped");
    return;
  }
  double sweep = static_cast<double>(endAngle) - startAngle;
  if (!clockwise && sweep < 0) sweep += 360 * std::ceil(-sweep / 360);
  if (clockwise && sweep > 0) sweep -= 360 * std::ceil(sweep / 360);
  sweep = std::clamp(sweep, -360.0, 360.0);

  const auto at = [&](double angle, double along) {
    // The point at `angle`, moved along the tangent there by `along` radii.
    const double c = std::cos(angle), s = std::sin(angle);
    return NSPoint{static_cast<float>(center.x + radius * (c - along * s)),
                   static_cast<float>(center.y + radius * (s + along * c))};
  };
  double angle = startAngle * std::numbers::pi / 180;
  lineToPoint(at(angle, 0));
  // A cubic follows a quarter circle to 0.03 % of its radius: control points at 4/3 tan(sweep / 4).
  const int pieces = static_cast<int>(std::ceil(std::abs(sweep) / 90 - 1e-9));
  if (pieces == 0) return;
  const double piece = sweep / pieces * std::numbers::pi / 180;
  const double handle = 4.0 / 3 * std::tan(piece / 4);
  for (int i = 0; i < pieces; ++i, angle += piece)
    append(Kind::curve, at(angle, handle), at(angle + piece, -handle), at(angle + piece, 0));
}

void NSBezierPath::replay(cairo_t* cairo) const {
  cairo_new_path(cairo);
  for (const Element& e : elements_) {
    const NSPoint* p = e.points;
    switch (e.kind) {
      case Kind::move:
        cairo_move_to(cairo, p[0].x, p[0].y);
        break;
      case Kind::line:
        cairo_line_to(cairo, p[0].x, p[0].y);
        break;
      case Kind::curve:
        cairo_curve_to(cairo, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y);
        break;
      case Kind::close:
        cairo_close_path(cairo);
        break;
    }
  }
}

bool NSBezierPath::isDenseOutline() const {
  if (static_cast<float>(elements_.size()) < denseHeights) return false;
  float height = 0;
  float y = elements_.front().points[0].y;
  for (const Element& e : elements_) {
    if (e.kind == Kind::close) continue;
    const float next = e.points[e.kind == Kind::curve ? 2 : 0].y;
    height += std::abs(next - y);
    y = next;
  }
  return height > denseHeights * NSHeight(controlPointBounds());
}

void NSBezierPath::fill() const {
  NSGraphicsContext* context = NSGraphicsContext::currentContext();
  if (!context) return;
  context->draw(controlPointBounds(), [this](cairo_t* cairo) {
    replay(cairo);
    const bool isCoarse = isDenseOutline();
    if (isCoarse) cairo_set_antialias(cairo, CAIRO_ANTIALIAS_FAST);  // 16 samples of a pixel, not 255
    cairo_fill(cairo);
    if (isCoarse) cairo_set_antialias(cairo, CAIRO_ANTIALIAS_DEFAULT);
  });
}

void NSBezierPath::stroke() const {
  NSGraphicsContext* context = NSGraphicsContext::currentContext();
  if (!context) return;
  const float reach = lineWidth_ * 5;  // half the width at a mitre of the limit
  context->draw(NSInsetRect(controlPointBounds(), -reach, -reach), [this](cairo_t* cairo) {
    replay(cairo);
    cairo_set_line_width(cairo, lineWidth_);
    cairo_set_line_cap(cairo, CAIRO_LINE_CAP_BUTT);
    cairo_set_line_join(cairo, CAIRO_LINE_JOIN_MITER);
    cairo_set_miter_limit(cairo, 10);
    cairo_stroke(cairo);
  });
}

void NSBezierPath::addClip() const {
  NSGraphicsContext* context = NSGraphicsContext::currentContext();
  if (!context) return;
  replay(context->cairo());
  cairo_clip(context->cairo());
}

NSRect NSBezierPath::controlPointBounds() const {
  float left = HUGE_VALF, bottom = HUGE_VALF, right = -HUGE_VALF, top = -HUGE_VALF;
  for (const Element& e : elements_) {
    const int count = e.kind == Kind::close ? 0 : e.kind == Kind::curve ? 3 : 1;
    for (int i = 0; i < count; ++i) {
      left = std::min(left, e.points[i].x);
      right = std::max(right, e.points[i].x);
      bottom = std::min(bottom, e.points[i].y);
      top = std::max(top, e.points[i].y);
    }
  }
  return left > right ? NSZeroRect : NSMakeRect(left, bottom, right - left, top - bottom);
}

std::shared_ptr<NSBezierPath> NSBezierPath::mapped(const std::function<NSPoint(NSPoint)>& map) const {
  auto path = bezierPath();
  path->lineWidth_ = lineWidth_;
  for (const Element& e : elements_) {
    if (e.kind == Kind::close)
      path->closePath();
    else
      path->append(e.kind, map(e.points[0]), map(e.points[1]), map(e.points[2]));
  }
  return path;
}
