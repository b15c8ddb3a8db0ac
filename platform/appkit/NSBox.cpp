#include "NSBox.h"

const Class& NSBox::isa() const {
  return record();
}

const Class& NSBox::record() {
  static const Class c = Class::of<NSBox>("NSBox", NSView::record()).attribute<&NSBox::setTitle>("title");
  return c;
}

NSBox::NSBox(NSRect frame) : NSView(frame), contentView_(std::make_shared<NSView>(bounds())) {
  addSubview(contentView_);
}

void NSBox::setTitle(std::string title) {
  title_ = std::move(title);
  setNeedsDisplay(true);
}

void NSBox::setFrame(NSRect frame) {
  NSView::setFrame(frame);
  contentView_->setFrame(bounds());
}
