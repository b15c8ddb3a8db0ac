#include "mrev_largeRoom.h"

#include "Class.h"
#include "jxAUGraphDisplay.h"

mrev_largeRoom::mrev_largeRoom() : RoomComposition({0.005f, 0.15f, 0.13f, jxAUGraphDisplay::blueHandle()}) {}

const Class& mrev_largeRoom::isa() const {
  return record();
}

const Class& mrev_largeRoom::record() {
  static const Class c = Class::of<mrev_largeRoom>("mrev_largeRoom", NSObject::record());
  return c;
}
