#include "NSControl.h"

const Class& NSControl::isa() const {
  return record();
}

const Class& NSControl::record() {
  static const Class c = Class::of<NSControl>("NSControl", NSView::record());
  return c;
}

bool NSControl::sendAction_to(SEL action, NSObject* target) {
  return NSPerformIfAnswered(target, action, this);
}
