#include "RoomGeometry.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float eyeHeight = 0.55f;    // of the picture
constexpr float focalLength = 0.40f;  // of the picture's height
constexpr float aspect = 1.36f;       // half width to height above the eye
constexpr float belowEye = 0.92f;     // to height above the eye
constexpr float farthestBend = 0.58f;

}  // namespace

RoomGeometry::RoomGeometry(NSRect bounds, const RoomLook& look)
    : center_{NSMinX(bounds) + NSWidth(bounds) / 2, NSMinY(bounds) + eyeHeight * NSHeight(bounds)},
      focus_(focalLength * NSHeight(bounds) * (0.56f + 0.50f * look.size)),
      distance_(0.86f + 0.34f * look.delay),
      depth_(0.22f + 2.3f * std::pow(look.size, 1.2f)) {
  frontScale_ = scaleAt(0);
  backScale_ = scaleAt(1);
  sway_ = look.sway * farthestBend * (frontScale_ - backScale_) * aspect;
  nearestDepth_ = (focus_ * belowEye / (eyeHeight * NSHeight(bounds)) - distance_) / depth_;
}

float RoomGeometry::scaleAt(float depth) const {
  return focus_ / (distance_ + depth_ * depth);
}

NSRect RoomGeometry::section(float depth) const {
  return ofScale(scaleAt(depth));
}

NSRect RoomGeometry::ofScale(float scale) const {
  const float part = std::max((frontScale_ - scale) / (frontScale_ - backScale_), 0.0f);
  const float x = center_.x + sway_ * (0.4f * part + 0.6f * part * part);
  return NSMakeRect(x - scale * aspect, center_.y - scale * belowEye, 2 * scale * aspect,
                    scale * (1 + belowEye));
}
