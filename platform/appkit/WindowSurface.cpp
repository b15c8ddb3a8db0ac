#include "WindowSurface.h"

#include <cairo.h>

#include "NSGraphicsContext.h"

namespace {

/// Everything in the rectangle gives way to one colour, transparency included.
void replace(cairo_t* cairo, const NSColor& color) {
  cairo_save(cairo);
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  cairo_set_source_rgba(cairo, color.redComponent(), color.greenComponent(), color.blueComponent(),
                        color.alphaComponent());
  cairo_paint(cairo);
  cairo_restore(cairo);
}

void copy(cairo_t* cairo, const Bitmap& from) {
  cairo_save(cairo);
  cairo_identity_matrix(cairo);
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  cairo_set_source_surface(cairo, from.surface(), 0, 0);
  cairo_paint(cairo);
  cairo_restore(cairo);
}

void display(NSGraphicsContext& context, const WindowSurface::Layer& layer, NSRect rect) {
  NSGraphicsContext::saveGraphicsState();
  context.translate(layer.origin.x, layer.origin.y);
  layer.view->displayRect(NSOffsetRect(rect, -layer.origin.x, -layer.origin.y));
  NSGraphicsContext::restoreGraphicsState();
}

}  // namespace

void WindowSurface::draw(const Layer& root, const NSColor& background, std::span<const NSRect> rects) {
  NSGraphicsContext context(views_);
  for (const NSRect& rect : rects) {
    NSGraphicsContext::saveGraphicsState();
    context.clipToRect(rect);
    if (!root.view->isOpaque()) replace(context.cairo(), background);
    display(context, root, rect);
    NSGraphicsContext::restoreGraphicsState();
  }
}

const Bitmap& WindowSurface::composed(std::span<const Layer> layers, std::span<const NSRect> rects) {
  if (layers.empty()) {
    composed_.reset();
    return views_;
  }
  const NSRect all{{0, 0}, views_.size()};
  if (!composed_) {
    composed_.emplace(views_.size(), views_.scale());
    rects = std::span(&all, 1);
  }
  NSGraphicsContext context(*composed_);
  for (const NSRect& rect : rects) {
    NSGraphicsContext::saveGraphicsState();
    context.clipToRect(rect);
    copy(context.cairo(), views_);
    for (const Layer& layer : layers) display(context, layer, rect);
    NSGraphicsContext::restoreGraphicsState();
  }
  return *composed_;
}
