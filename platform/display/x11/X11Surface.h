#pragma once

#include <cstdint>
#include <functional>

#include "PixelRect.h"
#include "X11Connection.h"

/// Brings pixels to one window.
class X11Surface {
 public:
  /// A window and its format; both, and the connection, outlive the surface.
  X11Surface(X11Connection& connection, const X11Connection::PixelFormat& format, Window window);
  ~X11Surface();
  X11Surface(const X11Surface&) = delete;
  X11Surface& operator=(const X11Surface&) = delete;

  /// Writes a row's pixels of the area, from its left to its right; `y` counts from the window's top.
  using WriteRow = std::function<void(int y, uint32_t* to)>;
  void put(PixelRect area, const WriteRow& write);

 private:
  X11Connection& connection_;
  const X11Connection::PixelFormat& format_;
  Window window_;
  GC gc_;
};
