#include "NSGraphicsContext.h"

#include <cairo.h>

#include <algorithm>

#include "NSAssertionHandler.h"
#include "ShadowMask.h"

namespace {

NSGraphicsContext* theCurrent = nullptr;

}  // namespace

NSGraphicsContext::NSGraphicsContext(Bitmap& bitmap)
    : NSGraphicsContext(bitmap.surface(), bitmap.physicalHeight(), bitmap.scale()) {}

NSGraphicsContext::NSGraphicsContext(cairo_surface_t* surface, int physicalHeight, float scale)
    : cairo_(cairo_create(surface)), scale_(scale), previous_(theCurrent) {
  // The one place where y turns upwards. A bitmap rounded up to whole pixels keeps its spare row at the top.
  cairo_translate(cairo(), 0, physicalHeight);
  cairo_scale(cairo(), scale, -scale);
  cairo_set_source_rgba(cairo(), 0, 0, 0, 1);
  theCurrent = this;
}

NSGraphicsContext::~NSGraphicsContext() {
  theCurrent = previous_;
}

NSGraphicsContext* NSGraphicsContext::currentContext() {
  return theCurrent;
}

void NSGraphicsContext::saveGraphicsState() {
  if (!theCurrent) return;
  cairo_save(theCurrent->cairo());
  theCurrent->states_.push_back(theCurrent->states_.back());
}

void NSGraphicsContext::restoreGraphicsState() {
  if (!theCurrent) return;
  if (theCurrent->states_.size() == 1)
    NSAssertionHandler::currentHandler().handleFailureInMethod(
        "restoreGraphicsState", nullptr, "NSGraphicsContext", __LINE__, "restore without its save");
  theCurrent->states_.pop_back();
  cairo_restore(theCurrent->cairo());
}

void NSGraphicsContext::setColor(const NSColor& color) {
  State& state = states_.back();
  state.red = color.redComponent();
  state.green = color.greenComponent();
  state.blue = color.blueComponent();
  state.alpha = color.alphaComponent();
  cairo_set_source_rgba(cairo(), state.red, state.green, state.blue, state.alpha);
}

void NSGraphicsContext::setShadow(const NSShadow& shadow) {
  states_.back().shadow = shadow;
}

void NSGraphicsContext::translate(float x, float y) {
  cairo_translate(cairo(), x, y);
}

void NSGraphicsContext::clipToRect(NSRect rect) {
  cairo_new_path(cairo());
  cairo_rectangle(cairo(), rect.origin.x, rect.origin.y, std::max(0.0f, rect.size.width),
                  std::max(0.0f, rect.size.height));
  cairo_clip(cairo());
}

NSRect NSGraphicsContext::clipBounds() const {
  double x1, y1, x2, y2;
  cairo_clip_extents(cairo(), &x1, &y1, &x2, &y2);
  return NSMakeRect(static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2 - x1),
                    static_cast<float>(y2 - y1));
}

void NSGraphicsContext::draw(NSRect extents, const std::function<void(cairo_t*)>& paint) {
  if (states_.back().shadow) drawShadow(extents, paint);
  if (NSIntersectsRect(extents, clipBounds())) paint(cairo());
}

void NSGraphicsContext::drawShadow(NSRect extents, const std::function<void(cairo_t*)>& paint) {
  const State& state = states_.back();
  const NSShadow& shadow = *state.shadow;
  if (!shadow.shadowColor() || shadow.shadowColor()->alphaComponent() <= 0) return;

  const NSSize offset{shadow.shadowOffset().width * scale(), shadow.shadowOffset().height * scale()};
  ShadowMask mask(cairo(), extents, offset, shadow.shadowBlurRadius() * scale());
  if (mask.isEmpty()) return;
  cairo_set_source_rgba(mask.cairo(), 0, 0, 0, state.alpha);
  paint(mask.cairo());
  mask.blur();

  const NSColor& color = *shadow.shadowColor();
  cairo_save(cairo());
  cairo_identity_matrix(cairo());
  cairo_set_source_rgba(cairo(), color.redComponent(), color.greenComponent(), color.blueComponent(),
                        color.alphaComponent());
  cairo_mask_surface(cairo(), mask.surface(), static_cast<float>(mask.physicalX()) + offset.width,
                     static_cast<float>(mask.physicalY()) - offset.height);
  cairo_restore(cairo());
}
