#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "CairoHandles.h"
#include "NSGeometry.h"

/// A path of lines and curves in points, built once and filled, stroked or clipped to as often as wanted.
/// Points that are not numbers are dropped, coordinates clamped to ±16000; both are logged once.
class NSBezierPath {
 public:
  static std::shared_ptr<NSBezierPath> bezierPath();
  static std::shared_ptr<NSBezierPath> bezierPathWithRect(NSRect rect);
  /// The inscribed ellipse, counter-clockwise from its rightmost point.
  static std::shared_ptr<NSBezierPath> bezierPathWithOvalInRect(NSRect rect);
  /// Fills with the current colour, source-over.
  static void fillRect(NSRect rect);

  void moveToPoint(NSPoint point);
  void lineToPoint(NSPoint point);
  void curveToPoint_controlPoint1_controlPoint2(NSPoint point, NSPoint control1, NSPoint control2);
  /// Ends the subpath with a line to its start, which is the current point from then on.
  void closePath();

  /// Appends an arc, angles in degrees. With a current point a line leads to the arc's start. Counter-
  /// clockwise 360 is added to the end while it is less than the start, clockwise subtracted while it is
  /// greater; equal angles are an empty arc; more than 360 degrees are drawn once round.
  void appendBezierPathWithArcWithCenter_radius_startAngle_endAngle_clockwise(NSPoint center, float radius,
                                                                              float startAngle,
                                                                              float endAngle, bool clockwise);
  /// Counter-clockwise.
  void appendBezierPathWithArcWithCenter_radius_startAngle_endAngle(NSPoint center, float radius,
                                                                    float startAngle, float endAngle) {
    appendBezierPathWithArcWithCenter_radius_startAngle_endAngle_clockwise(center, radius, startAngle,
                                                                           endAngle, false);
  }

  void setLineWidth(float width) { lineWidth_ = width; }
  float lineWidth() const { return lineWidth_; }

  /// Non-zero winding, open subpaths closed, edges antialiased, in the current colour. Where the outline goes
  /// up and down so often that no edge can be told from the next, they are antialiased coarsely, which
  /// takes less time.
  void fill() const;
  /// Centred on the path, butt caps, mitre joins (limit 10), in the current colour.
  void stroke() const;
  /// Cuts the clip down to the path until the graphics state is restored.
  void addClip() const;

  bool isEmpty() const { return elements_.empty(); }
  /// Smallest rectangle around all points, control points included; zero for an empty path.
  NSRect controlPointBounds() const;
  /// A copy with every point mapped; the line width stays.
  std::shared_ptr<NSBezierPath> mapped(const std::function<NSPoint(NSPoint)>& map) const;

 private:
  enum class Kind { move, line, curve, close };
  struct Element {
    Kind kind;
    NSPoint points[3];
  };

  void append(Kind kind, NSPoint a, NSPoint b = {}, NSPoint c = {});
  void replay(cairo_t* cairo) const;
  bool isDenseOutline() const;

  std::vector<Element> elements_;
  float lineWidth_ = 1;
};
