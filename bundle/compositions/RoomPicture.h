#pragma once

#include <array>

#include "NSColor.h"
#include "RoomGeometry.h"

class NSBezierPath;

/// One picture of a reverb's room. Draws in the current context, from the floor before the hall to the dot
/// on its back wall.
class RoomPicture {
 public:
  /// The colour must outlive it.
  RoomPicture(NSRect bounds, const RoomLook& look, const NSColor& color);

  void draw() const;

 private:
  using Corner = NSPoint (*)(NSRect);
  static constexpr int slices = 14;  // of the hall, for bend and shade

  void addEdge(NSBezierPath& path, Corner corner, bool backwards) const;
  void fillWall(Corner along, Corner back, const NSColor& color) const;
  void drawFloorBefore() const;
  void drawWalls() const;
  void drawShade() const;
  void drawWavefronts() const;
  void drawEdges() const;
  void drawSource() const;

  RoomLook look_;
  RoomGeometry geometry_;
  const NSColor& color_;
  std::array<NSRect, slices + 1> sections_;  // from the portal to the back wall
};
