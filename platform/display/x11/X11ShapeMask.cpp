#include "X11ShapeMask.h"

#include <algorithm>
#include <cstring>

namespace {

uint32_t opaque(uint32_t premultiplied, uint32_t alpha) {
  const auto straight = [&](int shift) {
    return std::min(255u, ((premultiplied >> shift & 255) * 255 + alpha / 2) / alpha) << shift;
  };
  return 0xff000000u | straight(16) | straight(8) | straight(0);
}

}  // namespace

void X11ShapeMask::copy(const Bitmap& bitmap, PixelRect area, X11Surface& surface) {
  if (width_ != bitmap.physicalWidth() || height_ != bitmap.physicalHeight()) {
    width_ = bitmap.physicalWidth();
    height_ = bitmap.physicalHeight();
    solid_.assign(static_cast<size_t>(width_) * static_cast<size_t>(height_), 0);
    changed_ = true;
  }
  for (int y = area.y; y < area.y + area.height; ++y) {
    const uint8_t* from = bitmap.row(y);
    uint32_t* to = surface.row(y);
    uint8_t* solid = &solid_[static_cast<size_t>(y) * static_cast<size_t>(width_)];
    for (int x = area.x; x < area.x + area.width; ++x) {
      uint32_t pixel;
      std::memcpy(&pixel, from + static_cast<ptrdiff_t>(x) * 4, sizeof pixel);
      const uint32_t alpha = pixel >> 24;
      const uint8_t isSolid = alpha >= 128;
      changed_ |= solid[x] != isSolid;
      solid[x] = isSolid;
      to[x] = isSolid ? opaque(pixel, alpha) : 0;
    }
  }
}

void X11ShapeMask::apply(XConnection* x, Window window) {
  if (!changed_) return;
  changed_ = false;
  std::vector<XRectangle> list = rectangles();
  XShapeCombineRectangles(x, window, ShapeBounding, 0, 0, list.data(), static_cast<int>(list.size()),
                          ShapeSet, YXBanded);
}

std::vector<XRectangle> X11ShapeMask::rectangles() const {
  std::vector<XRectangle> list;
  for (int y = 0; y < height_; ++y) {
    const auto begin = solid_.begin() + static_cast<ptrdiff_t>(y) * width_;
    const auto end = begin + width_;
    for (auto from = std::find(begin, end, 1); from != end;) {
      const auto to = std::find(from, end, 0);
      list.push_back({static_cast<short>(from - begin), static_cast<short>(y),
                      static_cast<unsigned short>(to - from), 1});
      from = std::find(to, end, 1);
    }
  }
  return list;
}
