#include "NSViewUtils.h"

#include "NSAffineTransform.h"
#include "NSGraphicsContext.h"

void performSelectorOnSubviews(NSView& view, SEL selector) {
  performSelectorOnSubviews_object(view, selector, nullptr);
}

void performSelectorOnSubviews_object(NSView& view, SEL selector, NSObject* object) {
  // By index: a message may add or remove subviews.
  const auto& subviews = view.viewForSubviews().subviews();
  for (size_t i = 0; i < subviews.size(); ++i) {
    const std::shared_ptr<NSView> subview = subviews[i];
    NSPerformIfAnswered(subview.get(), selector, object);
  }
}

void drawSuperViewAsBg(NSView& view, NSView& last) {
  if (last.superview()) drawSuperViewAsBg(view, *last.superview());
  const NSPoint place = view.convertPoint_fromView({0, 0}, &last);
  NSGraphicsContext::saveGraphicsState();
  NSAffineTransform transform = NSAffineTransform::transform();
  transform.translateXBy_yBy(place.x, place.y);
  transform.concat();
  last.drawRect({{-place.x, -place.y}, view.bounds().size});
  NSGraphicsContext::restoreGraphicsState();
}

void drawSuperViewsAsOpaqueBackground(NSView& view) {
  if (view.superview()) drawSuperViewAsBg(view, *view.superview());
}
