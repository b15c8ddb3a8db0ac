#include "mrev_smallRoom.h"

#include "Class.h"
#include "jxAUGraphDisplay.h"

mrev_smallRoom::mrev_smallRoom()
    : RoomComposition({0.0001f, 0.05f, 0.03f, jxAUGraphDisplay::greenHandle()}) {}

const Class& mrev_smallRoom::isa() const {
  return record();
}

const Class& mrev_smallRoom::record() {
  static const Class c = Class::of<mrev_smallRoom>("mrev_smallRoom", NSObject::record());
  return c;
}
