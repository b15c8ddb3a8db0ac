#pragma once

#include <vector>

#include "NSGeometry.h"

/// A screen, its frame in points with y upwards. The first of the list has its lower left corner at the
/// origin; the list is never empty.
class NSScreen {
 public:
  static std::vector<NSScreen> screens();

  explicit NSScreen(NSRect frame) : frame_(frame) {}
  NSRect frame() const { return frame_; }

 private:
  NSRect frame_;
};
