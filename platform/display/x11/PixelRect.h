#pragma once

/// Whole physical pixels, y down, as the server counts them.
struct PixelRect {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;

  bool isEmpty() const { return width <= 0 || height <= 0; }
  bool contains(int px, int py) const { return px >= x && py >= y && px < x + width && py < y + height; }
  friend bool operator==(const PixelRect&, const PixelRect&) = default;
};
