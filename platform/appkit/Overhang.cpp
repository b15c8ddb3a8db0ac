#include "Overhang.h"

#include <algorithm>
#include <array>

Overhang::Overhang(Display& display, DisplayWindow& owner, NSRect part, NSRect layer, bool opaque)
    : part_(part),
      offset_{layer.origin.x - part.origin.x, layer.origin.y - part.origin.y},
      surface_(part.size, display.scale()),
      window_(display.openWindow({.frame = part,
                                  .title = {},
                                  .borderless = true,
                                  .translucent = !opaque,
                                  .ignoresMouse = true,
                                  .owner = &owner},
                                 *this)) {
  damage_.add({{0, 0}, part.size});
  window_->show(false);
}

void Overhang::addDamage(NSRect rect) {
  damage_.add(NSOffsetRect(rect, offset_.x, offset_.y));
}

void Overhang::present(NSView& content, const NSColor& background) {
  std::vector<NSRect> rects = damage_.take();
  for (NSRect& rect : rects)
    rect = NSIntersectionRect(NSIntegralRectAtScale(rect, surface_.views().scale()), {{0, 0}, part_.size});
  std::erase_if(rects, [](const NSRect& rect) { return NSIsEmptyRect(rect); });
  if (rects.empty()) return;
  surface_.draw({&content, offset_}, background, rects);
  window_->present(surface_.views(), rects);
}

std::vector<NSRect> partsBeyond(NSRect inner, NSRect rect, float scale) {
  const NSRect whole = NSIntegralRectAtScale(rect, scale);
  const float left = std::clamp(NSMinX(inner), NSMinX(whole), NSMaxX(whole));
  const float right = std::clamp(NSMaxX(inner), NSMinX(whole), NSMaxX(whole));
  const float bottom = std::clamp(NSMinY(inner), NSMinY(whole), NSMaxY(whole));
  const float top = std::clamp(NSMaxY(inner), NSMinY(whole), NSMaxY(whole));
  const std::array sides{
      NSMakeRect(NSMinX(whole), NSMinY(whole), left - NSMinX(whole), NSHeight(whole)),
      NSMakeRect(right, NSMinY(whole), NSMaxX(whole) - right, NSHeight(whole)),
      NSMakeRect(left, NSMinY(whole), right - left, bottom - NSMinY(whole)),
      NSMakeRect(left, top, right - left, NSMaxY(whole) - top),
  };
  std::vector<NSRect> parts;
  std::ranges::copy_if(sides, std::back_inserter(parts), [](NSRect side) { return !NSIsEmptyRect(side); });
  return parts;
}
