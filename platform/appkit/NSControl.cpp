#include "NSControl.h"

const Class& NSControl::isa() const {
  return record();
}

const Class& NSControl::record() {
  static const Class c = Class::of<NSControl>("NSControl", NSView::record());
  return c;
}

NSControl::NSControl(NSCoder& coder) : NSView(coder) {
  coder.decodeValueOfObjCType_at("i", &tag_);
}

void NSControl::encodeWithCoder(NSCoder& coder) const {
  NSView::encodeWithCoder(coder);
  coder.encodeValueOfObjCType_at("i", &tag_);
}

bool NSControl::sendAction_to(SEL action, NSObject* target) {
  return NSPerformIfAnswered(target, action, this);
}
