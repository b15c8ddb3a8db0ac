#pragma once

#include <vector>

#include "NSGeometry.h"
#include "PixelRect.h"
#include "X11Connection.h"

/// The monitors, and the way between the server's pixels (y down, from the root window's corner) and screen
/// points (y up, from the lower left corner of the first monitor, which is the primary one).
class X11Screens {
 public:
  X11Screens(X11Connection& connection, float scale) : connection_(connection), scale_(scale) {}

  float scale() const { return scale_; }
  /// The primary first; never empty. Asks the server.
  std::vector<PixelRect> monitors() const;
  std::vector<NSRect> frames() const;

  PixelRect toPixels(NSRect points) const;
  NSRect toPoints(PixelRect pixels) const;
  /// The pixel of a monitor that is nearest to one of the root window.
  PixelRect nearest(int x, int y) const;

 private:
  X11Connection& connection_;
  float scale_;
};

/// The scale that the user's resources ask for: Xft.dpi / 96 in quarters, 1 without or with an absurd value.
float scaleFromResources(const char* resources);
