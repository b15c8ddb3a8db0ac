#include "NSImageView.h"

#include <algorithm>

const Class& NSImageView::isa() const {
  return record();
}

const Class& NSImageView::record() {
  static const Class c = Class::of<NSImageView>("NSImageView", NSControl::record());
  return c;
}

void NSImageView::setImage(std::shared_ptr<NSImage> image) {
  image_ = std::move(image);
  setNeedsDisplay(true);
}

void NSImageView::drawRect(NSRect) {
  if (!image_) return;
  const NSSize size = image_->size();
  const NSRect b = bounds();
  if (size.width <= 0 || size.height <= 0) return;
  const float factor = std::min({1.0f, NSWidth(b) / size.width, NSHeight(b) / size.height});
  const NSSize shown{size.width * factor, size.height * factor};
  image_->drawInRect_fromRect_operation_fraction(
      {{(NSWidth(b) - shown.width) / 2, (NSHeight(b) - shown.height) / 2}, shown}, NSZeroRect,
      isOpaque() ? NSCompositeCopy : NSCompositeSourceOver, 1);
}
