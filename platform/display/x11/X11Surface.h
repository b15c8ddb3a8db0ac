#pragma once

#include <cstdint>
#include <vector>

#include "Bitmap.h"
#include "PixelRect.h"
#include "X11Connection.h"

/// The pixels of one window on their way to the server: in memory shared with it where that works, else sent.
class X11Surface {
 public:
  /// A window's format and a drawable of its depth; both outlive the surface.
  X11Surface(X11Connection& connection, const X11Connection::PixelFormat& format, Window window);
  ~X11Surface();
  X11Surface(const X11Surface&) = delete;
  X11Surface& operator=(const X11Surface&) = delete;

  /// Forgets the pixels if the size changes.
  void resize(int width, int height);
  uint32_t* row(int y);
  /// Copies part of a bitmap of this size as it is.
  void copy(const Bitmap& bitmap, PixelRect area);
  /// Brings part of it to the window.
  void put(PixelRect area);

 private:
  bool shareMemory(int width, int height);
  void useOwnMemory(int width, int height);
  void release();

  X11Connection& connection_;
  const X11Connection::PixelFormat& format_;
  Window window_;
  GC gc_;
  XImage* image_ = nullptr;
  XShmSegmentInfo shared_{};
  bool isShared_ = false;
  std::vector<uint32_t> own_;
};
