#pragma once

#include "NSGeometry.h"

/// What the inputs of a room's picture say, each from 0 to 1 but for the sway, −1 to 1.
struct RoomLook {
  float size, delay, density, scatter, brightness, sway;
};

/// Where the parts of the hall lie in the picture. Depth runs from 0 at the portal to 1 at the back wall,
/// and below 0 on the floor before it.
class RoomGeometry {
 public:
  RoomGeometry(NSRect bounds, const RoomLook& look);

  /// The hall's cross-section at a depth, which the bend moves sideways as a whole.
  NSRect section(float depth) const;
  /// The one half as large as portal and back wall together. Corners of the sections lie on parabolas.
  NSRect middle() const { return ofScale((frontScale_ + backScale_) / 2); }
  /// The depth, below 0, at which the floor leaves the picture.
  float nearestDepth() const { return nearestDepth_; }

 private:
  float scaleAt(float depth) const;
  NSRect ofScale(float scale) const;

  NSPoint center_;
  float focus_;     // focal length times half the hall's width
  float distance_;  // of the portal
  float depth_;     // of the hall
  float sway_;      // points at the back wall
  float frontScale_, backScale_;
  float nearestDepth_;
};
