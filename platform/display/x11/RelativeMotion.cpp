#include "RelativeMotion.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double agreement = 1.5;  // pixels; places are whole, device motion is not

}  // namespace

void RelativeMotion::setExtent(Extent extent) {
  extent_ = extent;
  raw_ = {};
}

void RelativeMotion::place(int x, int y) {
  x_ = x;
  y_ = y;
  raw_ = {};
}

void RelativeMotion::raw(double dx, double dy) {
  raw_.x += dx;
  raw_.y += dy;
}

void RelativeMotion::moved(int x, int y) {
  if (extent_ == Extent::locked) return;
  Delta step{static_cast<double>(x - x_), static_cast<double>(y - y_)};
  const bool comparable = (raw_.x != 0 || raw_.y != 0) && (step.x != 0 || step.y != 0);
  if (comparable && !isAtEdge(x_, y_) && !isAtEdge(x, y))
    trusted_ = std::abs(raw_.x - step.x) <= agreement && std::abs(raw_.y - step.y) <= agreement;
  const Delta raw = raw_;
  place(x, y);
  if (isBeyond(raw.x - step.x, 1, 0)) step.x = raw.x;
  if (isBeyond(raw.y - step.y, 0, 1)) step.y = raw.y;
  total_.x += step.x;
  total_.y += step.y;
}

RelativeMotion::Delta RelativeMotion::take() {
  if (extent_ == Extent::locked) return std::exchange(raw_, {});
  // Raw motion that leads off the edge gets no place; other raw motion waits for the place it leads to.
  if (isBeyond(raw_.x, 1, 0)) total_.x += std::exchange(raw_.x, 0);
  if (isBeyond(raw_.y, 0, 1)) total_.y += std::exchange(raw_.y, 0);
  return std::exchange(total_, {});
}

bool RelativeMotion::isBeyond(double surplus, int xAxis, int yAxis) const {
  if (extent_ != Extent::unbounded || !trusted_ || surplus == 0) return false;
  const int sign = surplus > 0 ? 1 : -1;
  return isHeld(x_ + sign * xAxis, y_ + sign * yAxis);
}

bool RelativeMotion::isAtEdge(int x, int y) const {
  return isHeld(x - 1, y) || isHeld(x + 1, y) || isHeld(x, y - 1) || isHeld(x, y + 1);
}

bool RelativeMotion::isHeld(int x, int y) const {
  return std::none_of(screens_.begin(), screens_.end(),
                      [&](const PixelRect& screen) { return screen.contains(x, y); });
}
