#pragma once

#include <utility>
#include <vector>

#include "PixelRect.h"

/// The pointer's motion in pixels, right and down positive. It is the difference of the pointer's places on
/// the screen, which all servers report alike; only where the screen's edge holds the pointer back, and only
/// while unbounded, the devices' own motion takes its place: on that axis alone, and after it has been seen
/// to agree with the places (nested servers report absolute numbers there). Nothing moves the pointer
/// meanwhile, which would lose or double motion on some servers. A pointer that is locked in its place moves
/// by its devices alone.
class RelativeMotion {
 public:
  struct Delta {
    double x = 0;
    double y = 0;
  };

  /// Where the pointer can be.
  void setScreens(std::vector<PixelRect> screens) { screens_ = std::move(screens); }
  enum class Extent { bounded, unbounded, locked };
  void setExtent(Extent extent);

  /// The pointer stands here now; getting here was no motion.
  void place(int x, int y);
  /// A device moved. Comes before the place that it leads to.
  void raw(double dx, double dy);
  /// The pointer was moved to here.
  void moved(int x, int y);

  int x() const { return x_; }
  int y() const { return y_; }
  /// All motion since the last call, also what has no place to lead to beyond the edge.
  Delta take();

 private:
  /// True when motion along the axis that exceeds the places' by `surplus` went off the screen.
  bool isBeyond(double surplus, int xAxis, int yAxis) const;
  bool isAtEdge(int x, int y) const;
  /// True when the pixel is on no screen.
  bool isHeld(int x, int y) const;

  std::vector<PixelRect> screens_;
  Extent extent_ = Extent::bounded;
  bool trusted_ = false;
  int x_ = 0;
  int y_ = 0;
  Delta raw_;
  Delta total_;
};
