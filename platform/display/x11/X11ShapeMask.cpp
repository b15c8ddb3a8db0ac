#include "X11ShapeMask.h"

#include <algorithm>

namespace {

bool isSolid(uint32_t pixel) {
  return pixel >> 24 >= 128;
}

uint32_t opaque(uint32_t premultiplied, uint32_t alpha) {
  const auto straight = [&](int shift) {
    return std::min(255u, ((premultiplied >> shift & 255) * 255 + alpha / 2) / alpha) << shift;
  };
  return 0xff000000u | straight(16) | straight(8) | straight(0);
}

}  // namespace

uint32_t X11ShapeMask::solid(uint32_t pixel) {
  return isSolid(pixel) ? opaque(pixel, pixel >> 24) : 0;
}

void X11ShapeMask::mark(const Bitmap& bitmap, PixelRect area) {
  if (width_ != bitmap.physicalWidth() || height_ != bitmap.physicalHeight()) {
    width_ = bitmap.physicalWidth();
    height_ = bitmap.physicalHeight();
    solid_.assign(static_cast<size_t>(width_) * static_cast<size_t>(height_), 0);
    changed_ = true;
  }
  for (int y = area.y; y < area.y + area.height; ++y) {
    const auto from = bitmap.row(y).subspan(static_cast<size_t>(area.x), static_cast<size_t>(area.width));
    uint8_t* known =
        &solid_[static_cast<size_t>(y) * static_cast<size_t>(width_) + static_cast<size_t>(area.x)];
    for (const uint32_t pixel : from) {
      changed_ |= *known != isSolid(pixel);
      *known++ = isSolid(pixel);
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
