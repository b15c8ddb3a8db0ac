#pragma once

#include <vector>

#include "NSGeometry.h"

/// Rectangles that have to be drawn, in points. Two are joined only when their union is no larger than they
/// are together, so that damage at two ends of a window does not redraw what lies between.
class DamageList {
 public:
  void add(NSRect rect);
  bool isEmpty() const { return rects_.empty(); }
  std::vector<NSRect> take();

 private:
  std::vector<NSRect> rects_;
};

/// The rectangle grown to whole physical pixels at that scale.
NSRect NSIntegralRectAtScale(NSRect rect, float scale);
