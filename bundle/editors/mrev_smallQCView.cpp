#include "mrev_smallQCView.h"

const Class& mrev_smallQCView::isa() const {
  return record();
}

const Class& mrev_smallQCView::record() {
  static const Class c = Class::of<mrev_smallQCView>("mrev_smallQCView", mrev_RoomView::record());
  return c;
}
