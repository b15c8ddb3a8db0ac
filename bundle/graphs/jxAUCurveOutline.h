#pragma once

#include <optional>

#include "NSBezierPath.h"

/// Adds to a path those points of a curve that can be seen: a curve of thousands of points over a few hundred
/// pixels becomes a few dozen lines. The curve runs from left to right; no point that is left out lies more
/// than `tolerance` above or below the line that stands for it.
class jxAUCurveOutline {
 public:
  /// `tolerance` in points.
  jxAUCurveOutline(NSBezierPath& path, float tolerance) : path_(path), tolerance_(tolerance) {}

  /// Its x is not less than that of the point before.
  void add(NSPoint point);
  /// Adds the last point.
  void end();

 private:
  void restartFrom(NSPoint anchor, NSPoint point);

  NSBezierPath& path_;
  float tolerance_;
  std::optional<NSPoint> anchor_;  // the last point that was added to the path
  std::optional<NSPoint> last_;    // not added yet
  // Slopes of the lines from the anchor that pass all points since near enough.
  float lowestSlope_ = 0;
  float highestSlope_ = 0;
};
