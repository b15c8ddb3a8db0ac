#pragma once

#include <algorithm>
#include <cmath>

/// Points, sizes and rectangles in logical points; y grows upwards. Plain pairs of floats.
struct NSPoint {
  float x = 0;
  float y = 0;
  friend bool operator==(const NSPoint&, const NSPoint&) = default;
};

struct NSSize {
  float width = 0;
  float height = 0;
  friend bool operator==(const NSSize&, const NSSize&) = default;
};

struct NSRect {
  NSPoint origin;
  NSSize size;
  friend bool operator==(const NSRect&, const NSRect&) = default;
};

inline constexpr NSRect NSZeroRect{};

constexpr NSPoint NSMakePoint(float x, float y) {
  return {x, y};
}
constexpr NSSize NSMakeSize(float width, float height) {
  return {width, height};
}
constexpr NSRect NSMakeRect(float x, float y, float width, float height) {
  return {{x, y}, {width, height}};
}

constexpr float NSMinX(NSRect r) {
  return r.origin.x;
}
constexpr float NSMinY(NSRect r) {
  return r.origin.y;
}
constexpr float NSMaxX(NSRect r) {
  return r.origin.x + r.size.width;
}
constexpr float NSMaxY(NSRect r) {
  return r.origin.y + r.size.height;
}
constexpr float NSWidth(NSRect r) {
  return r.size.width;
}
constexpr float NSHeight(NSRect r) {
  return r.size.height;
}

/// True for rectangles without area, negative sizes included.
constexpr bool NSIsEmptyRect(NSRect r) {
  return !(r.size.width > 0 && r.size.height > 0);
}

/// Smaller by dx at the left and the right and by dy above and below; the result may be empty.
constexpr NSRect NSInsetRect(NSRect r, float dx, float dy) {
  return NSMakeRect(r.origin.x + dx, r.origin.y + dy, r.size.width - 2 * dx, r.size.height - 2 * dy);
}

constexpr NSRect NSOffsetRect(NSRect r, float dx, float dy) {
  return NSMakeRect(r.origin.x + dx, r.origin.y + dy, r.size.width, r.size.height);
}

/// The common part; the zero rectangle when there is none.
constexpr NSRect NSIntersectionRect(NSRect a, NSRect b) {
  const float x = std::max(NSMinX(a), NSMinX(b));
  const float y = std::max(NSMinY(a), NSMinY(b));
  const NSRect common =
      NSMakeRect(x, y, std::min(NSMaxX(a), NSMaxX(b)) - x, std::min(NSMaxY(a), NSMaxY(b)) - y);
  return NSIsEmptyRect(common) ? NSZeroRect : common;
}

/// The smallest rectangle around both; an empty one does not count.
constexpr NSRect NSUnionRect(NSRect a, NSRect b) {
  if (NSIsEmptyRect(a)) return b;
  if (NSIsEmptyRect(b)) return a;
  const float x = std::min(NSMinX(a), NSMinX(b));
  const float y = std::min(NSMinY(a), NSMinY(b));
  return NSMakeRect(x, y, std::max(NSMaxX(a), NSMaxX(b)) - x, std::max(NSMaxY(a), NSMaxY(b)) - y);
}

constexpr bool NSIntersectsRect(NSRect a, NSRect b) {
  return !NSIsEmptyRect(NSIntersectionRect(a, b));
}

constexpr bool NSContainsRect(NSRect outer, NSRect inner) {
  return !NSIsEmptyRect(inner) && NSMinX(inner) >= NSMinX(outer) && NSMinY(inner) >= NSMinY(outer) &&
         NSMaxX(inner) <= NSMaxX(outer) && NSMaxY(inner) <= NSMaxY(outer);
}

/// Lower and left edge belong to the rectangle, upper and right edge do not.
constexpr bool NSPointInRect(NSPoint p, NSRect r) {
  return p.x >= NSMinX(r) && p.x < NSMaxX(r) && p.y >= NSMinY(r) && p.y < NSMaxY(r);
}
