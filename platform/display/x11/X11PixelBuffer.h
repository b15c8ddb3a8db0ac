#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "X11Headers.h"

class X11Errors;

/// Where pixels wait for the server to read them: memory shared with it where that works. One for all windows
/// of a connection and smaller than most of them; a large picture goes through it in strips.
class X11PixelBuffer {
 public:
  /// The connection outlives the buffer.
  X11PixelBuffer(XConnection* x, X11Errors& errors);
  ~X11PixelBuffer();
  X11PixelBuffer(const X11PixelBuffer&) = delete;
  X11PixelBuffer& operator=(const X11PixelBuffer&) = delete;

  /// Pixels that one `take` can give; more than the widest window has in a row.
  static constexpr size_t capacity = size_t{1} << 16;
  /// Memory that the server has done reading; waits for it when all was given away.
  std::span<uint32_t> take(size_t pixels);
  /// Brings what was taken last, rows of `width` pixels, to a place of a drawable with that visual and depth.
  void put(std::span<uint32_t> taken, unsigned width, Drawable to, GC gc, const Visual* visual, int depth,
           int x, int y);

 private:
  bool share(X11Errors& errors);

  XConnection* x_;
  XShmSegmentInfo shared_{};
  bool isShared_ = false;
  std::vector<uint32_t> own_;
  std::span<uint32_t> pixels_;
  size_t given_ = 0;
};
