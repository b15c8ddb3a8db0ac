#include "DamageList.h"

#include <cmath>
#include <cstddef>
#include <utility>

namespace {

float area(NSRect r) {
  return r.size.width * r.size.height;
}

}  // namespace

void DamageList::add(NSRect rect) {
  if (NSIsEmptyRect(rect)) return;
  // A rectangle that grew by joining may now join others.
  for (size_t i = 0; i < rects_.size();) {
    const NSRect joined = NSUnionRect(rects_[i], rect);
    if (area(joined) <= area(rects_[i]) + area(rect)) {
      rect = joined;
      rects_.erase(rects_.begin() + static_cast<ptrdiff_t>(i));
      i = 0;
    } else {
      ++i;
    }
  }
  rects_.push_back(rect);
}

std::vector<NSRect> DamageList::take() {
  return std::exchange(rects_, {});
}

NSRect NSIntegralRectAtScale(NSRect rect, float scale) {
  // A coordinate that is a whole pixel but for rounding must not cost a row more.
  const auto down = [&](float v) { return std::floor(v * scale + 1e-3f) / scale; };
  const auto up = [&](float v) { return std::ceil(v * scale - 1e-3f) / scale; };
  const float x = down(NSMinX(rect)), y = down(NSMinY(rect));
  return NSMakeRect(x, y, up(NSMaxX(rect)) - x, up(NSMaxY(rect)) - y);
}
