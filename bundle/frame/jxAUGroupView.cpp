#include "jxAUGroupView.h"

#include "NSWindow.h"
#include "jxAUSectionStyle.h"

const Class& jxAUGroupView::isa() const {
  return record();
}

const Class& jxAUGroupView::record() {
  static const Class c = Class::of<jxAUGroupView>("jxAUGroupView", NSBox::record());
  return c;
}

void jxAUGroupView::drawRect(NSRect) {
  const NSRect b = bounds();
  drawSectionCard(NSMakeRect(NSMinX(b) + 2.5f, NSMinY(b) + 0.5f, NSWidth(b) - 5, NSHeight(b) - 1), title());
}

void jxAUGroupView::mouseDown(const NSEvent& event) {
  NSBox::mouseDown(event);
  if (window()) window()->makeFirstResponder(this);
}
