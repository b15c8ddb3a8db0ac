#include "mrev_largeQCView.h"

const Class& mrev_largeQCView::isa() const {
  return record();
}

const Class& mrev_largeQCView::record() {
  static const Class c = Class::of<mrev_largeQCView>("mrev_largeQCView", mrev_RoomView::record());
  return c;
}
