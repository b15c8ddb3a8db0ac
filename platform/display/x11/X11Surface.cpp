#include "X11Surface.h"

#include <algorithm>

X11Surface::X11Surface(X11Connection& connection, const X11Connection::PixelFormat& format, Window window)
    : connection_(connection),
      format_(format),
      window_(window),
      gc_(XCreateGC(connection.x(), window, 0, nullptr)) {}

X11Surface::~X11Surface() {
  XFreeGC(connection_.x(), gc_);
}

void X11Surface::put(PixelRect area, const WriteRow& write) {
  X11PixelBuffer& buffer = connection_.pixels();
  const auto width = static_cast<size_t>(area.width);
  const int end = area.y + area.height;
  const int rows = static_cast<int>(X11PixelBuffer::capacity / width);
  for (int y = area.y; y < end; y += rows) {
    const int last = std::min(y + rows, end);
    const std::span<uint32_t> strip = buffer.take(width * static_cast<size_t>(last - y));
    for (int row = y; row < last; ++row) write(row, &strip[static_cast<size_t>(row - y) * width]);
    buffer.put(strip, static_cast<unsigned>(width), window_, gc_, format_.visual, format_.depth, area.x, y);
  }
}
