#include "mrev_RoomView.h"

namespace {

constexpr double degreesPerTick = 9;  // at a rate of 1: once round in a second

}  // namespace

const Class& mrev_RoomView::isa() const {
  return record();
}

const Class& mrev_RoomView::record() {
  static const Class c = Class::of<mrev_RoomView>("mrev_RoomView", QCView::record())
                             .answers<&mrev_RoomView::valueChanged>("valueChanged:");
  return c;
}

void mrev_RoomView::setAudioUnit(AudioUnit unit) {
  for (size_t slot = 0; slot < slotCount; ++slot)
    if (identifiers_[slot] != unused)
      param[slot] = std::make_shared<jxAUParam>(AudioUnitParameter{unit, identifiers_[slot]}, this,
                                                NSSelectorFromString("valueChanged:"));
  valueChanged(nullptr);
}

void mrev_RoomView::valueChanged(jxAUParam*) {
  setValue_forInputKey(valueOf(depth), "modDepth");
  setValue_forInputKey(valueOf(delayRange), "delayRange");
  setValue_forInputKey(valueOf(size), "roomSize");
  setValue_forInputKey(valueOf(density), "reverbDensity");
  setValue_forInputKey(valueOf(brightness), "hifreqAbsorb");
  setValue_forInputKey(valueOf(preDelay) + valueOf(roomDelay), "largeDelay");
  modRate = valueOf(rate);
}

void mrev_RoomView::update() {
  if (!isRendering()) return;
  if (modRate > 0) modPos = static_cast<float>(modPos + modRate * degreesPerTick);
  if (modPos > 90) modPos -= 180;
  setValue_forInputKey(modPos, "modDegree");
}
