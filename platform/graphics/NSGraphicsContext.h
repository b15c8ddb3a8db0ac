#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "Bitmap.h"
#include "CairoHandles.h"
#include "NSColor.h"
#include "NSGeometry.h"
#include "NSShadow.h"

/// What drawing goes to: a bitmap, seen in points with y upwards, and a stack of graphics states (matrix,
/// clip, colour, shadow). Contexts nest: a new one is current until it ends. Main thread.
class NSGraphicsContext {
 public:
  /// Draws to the bitmap, which must outlive it; fresh state: no clip, black, no shadow.
  explicit NSGraphicsContext(Bitmap& bitmap);
  /// The same for any cairo surface of that height in physical pixels, `scale` of them to a point.
  NSGraphicsContext(cairo_surface_t* surface, int physicalHeight, float scale);
  /// The context that was current before is current again.
  ~NSGraphicsContext();
  NSGraphicsContext(const NSGraphicsContext&) = delete;
  NSGraphicsContext& operator=(const NSGraphicsContext&) = delete;

  /// Null when nothing is being drawn to: drawing then has no effect.
  static NSGraphicsContext* currentContext();

  /// On the current context. A restore without its save is reported to the assertion handler.
  static void saveGraphicsState();
  static void restoreGraphicsState();

  void setColor(const NSColor& color);
  void setShadow(const NSShadow& shadow);
  void translate(float x, float y);
  void clipToRect(NSRect rect);
  /// The current clip in the current coordinates; empty when everything is clipped away.
  NSRect clipBounds() const;

  /// One drawing operation, thrown as shadow first if one is in force. `paint` draws on the cairo_t that it
  /// is given, whose matrix is the current one and whose colour is set; `extents` surrounds what it draws,
  /// in the current coordinates: where nothing of that can be seen, `paint` is not called.
  void draw(NSRect extents, const std::function<void(cairo_t*)>& paint);

  cairo_t* cairo() const { return cairo_.get(); }
  float scale() const { return scale_; }

 private:
  struct State {
    float red = 0, green = 0, blue = 0, alpha = 1;
    std::optional<NSShadow> shadow;
  };

  void drawShadow(NSRect extents, const std::function<void(cairo_t*)>& paint);

  graphics::CairoPtr cairo_;
  float scale_;
  NSGraphicsContext* previous_;
  std::vector<State> states_{State()};
};
