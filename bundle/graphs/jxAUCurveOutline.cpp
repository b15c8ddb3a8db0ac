#include "jxAUCurveOutline.h"

#include <algorithm>
#include <limits>

void jxAUCurveOutline::add(NSPoint point) {
  if (!anchor_) {
    path_.lineToPoint(point);
    anchor_ = point;
    return;
  }
  if (!last_) {
    restartFrom(*anchor_, point);
    return;
  }
  const float dx = point.x - anchor_->x;
  const float slope = (point.y - anchor_->y) / dx;
  if (dx > 0 && slope >= lowestSlope_ && slope <= highestSlope_) {
    lowestSlope_ = std::max(lowestSlope_, slope - tolerance_ / dx);
    highestSlope_ = std::min(highestSlope_, slope + tolerance_ / dx);
    last_ = point;
  } else {
    path_.lineToPoint(*last_);
    restartFrom(*last_, point);
  }
}

void jxAUCurveOutline::end() {
  if (last_) path_.lineToPoint(*last_);
}

void jxAUCurveOutline::restartFrom(NSPoint anchor, NSPoint point) {
  anchor_ = anchor;
  last_ = point;
  const float dx = point.x - anchor.x;
  if (dx > 0) {
    const float slope = (point.y - anchor.y) / dx;
    lowestSlope_ = slope - tolerance_ / dx;
    highestSlope_ = slope + tolerance_ / dx;
  } else {
    lowestSlope_ = std::numeric_limits<float>::infinity();  // nothing lies on beyond a vertical line
    highestSlope_ = -lowestSlope_;
  }
}
