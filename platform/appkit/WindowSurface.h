#pragma once

#include <memory>
#include <optional>
#include <span>

#include "Bitmap.h"
#include "NSColor.h"
#include "NSView.h"

/// A window's pixels: what its views have drawn and, when floating windows lie on it as layers, the picture
/// of both together, which is what is presented.
class WindowSurface {
 public:
  WindowSurface(NSSize size, float scale) : views_(size, scale) {}

  struct Layer {
    NSView* view;
    NSPoint origin;  // of the view, in this window
  };

  /// Draws the view tree anew inside the rectangles (points of the window, whole pixels), over `background`.
  void draw(const Layer& root, const NSColor& background, std::span<const NSRect> rects);
  /// The picture with the layers on top, up to date inside the rectangles. Valid until the next call.
  const Bitmap& composed(std::span<const Layer> layers, std::span<const NSRect> rects);
  const Bitmap& views() const { return views_; }

 private:
  Bitmap views_;
  std::optional<Bitmap> composed_;
};
