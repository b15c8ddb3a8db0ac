#pragma once

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "Bitmap.h"
#include "NSColor.h"
#include "NSGraphicsContext.h"

using Pixel = std::array<uint8_t, 4>;
inline constexpr Pixel nothing{0, 0, 0, 0}, black{0, 0, 0, 255}, red{255, 0, 0, 255}, green{0, 255, 0, 255},
    blue{0, 0, 255, 255}, white{255, 255, 255, 255};

inline std::shared_ptr<NSColor> colorOf(Pixel p) {
  return NSColor::colorWithCalibratedRed_green_blue_alpha(p[0] / 255.0f, p[1] / 255.0f, p[2] / 255.0f,
                                                          p[3] / 255.0f);
}

/// A bitmap that `paint` has drawn to.
inline Bitmap painted(NSSize size, float scale, const std::function<void()>& paint) {
  Bitmap bitmap(size, scale);
  const NSGraphicsContext context(bitmap);
  paint();
  return bitmap;
}

/// The pixel that holds the point (points, y up).
inline Pixel at(const Bitmap& bitmap, float x, float y) {
  return bitmap.pixel(static_cast<int>(x * bitmap.scale()),
                      bitmap.physicalHeight() - 1 - static_cast<int>(y * bitmap.scale()));
}

/// The rectangle of the pixels that are meant: left, top, right, bottom in physical pixels, the last two
/// exclusive.
inline std::array<int, 4> boundsWhere(const Bitmap& bitmap,
                                      const std::function<bool(const Pixel&)>& isMeant) {
  std::array<int, 4> found{9999, 9999, -1, -1};
  for (int y = 0; y < bitmap.physicalHeight(); ++y)
    for (int x = 0; x < bitmap.physicalWidth(); ++x)
      if (isMeant(bitmap.pixel(x, y)))
        found = {std::min(found[0], x), std::min(found[1], y), std::max(found[2], x + 1),
                 std::max(found[3], y + 1)};
  return found;
}

/// A letter a pixel, the upper row first: '.' transparent, '~' partly, else the colour's initial or '?'.
inline std::vector<std::string> letters(const Bitmap& bitmap) {
  static const std::map<Pixel, char> initials{{nothing, '.'}, {black, 'k'}, {red, 'r'},
                                              {green, 'g'},   {blue, 'b'},  {white, 'w'}};
  std::vector<std::string> rows(bitmap.physicalHeight());
  for (int y = 0; y < bitmap.physicalHeight(); ++y)
    for (int x = 0; x < bitmap.physicalWidth(); ++x) {
      const auto known = initials.find(bitmap.pixel(x, y));
      const bool isOpaque = bitmap.pixel(x, y)[3] == 255;
      rows[y] += known != initials.end() ? known->second : isOpaque ? '?' : '~';
    }
  return rows;
}
