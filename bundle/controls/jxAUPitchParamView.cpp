#include "jxAUPitchParamView.h"

#include <cmath>

#include "NSAssertionHandler.h"

namespace {

constexpr float centsPerHalfstep = 100;
constexpr float mostHalfsteps = 24;
constexpr float mostCents = 49.999f;

}  // namespace

const Class& jxAUPitchParamView::isa() const {
  return record();
}

const Class& jxAUPitchParamView::record() {
  static const Class c = Class::of<jxAUPitchParamView>("jxAUPitchParamView", NSView::record())
                             .answers<&jxAUPitchParamView::knobsChanged>("knobsChanged:")
                             .answers<&jxAUPitchParamView::valueChanged>("valueChanged:");
  return c;
}

jxAUPitchParamView::jxAUPitchParamView(NSRect frame) : NSView(frame) {
  NSRect half = bounds();
  half.size.width /= 2;
  halfsteps =
      std::make_shared<jxValueKnob>(half, "semitones", "", false, -mostHalfsteps, mostHalfsteps, 0, 0);
  halfsteps->setIntegerOnly(true);
  half.origin.x += half.size.width;
  cents = std::make_shared<jxValueKnob>(half, "cents", "", false, -mostCents, mostCents, 0, 0);
  for (const auto& knob : {halfsteps, cents}) {
    knob->setTarget_action(this, NSSelectorFromString("knobsChanged:"));
    addSubview(knob);
  }
}

void jxAUPitchParamView::setAUParameter(const AudioUnitParameter& parameter) {
  if (mParam)
    NSAssertionHandler::currentHandler().handleFailureInMethod(
        "setAUParameter:", this, "jxAUPitchParamView", 62, "Error! Already hooked to an AU Parameter");
  mParam = std::make_shared<jxAUParam>(parameter, this, NSSelectorFromString("valueChanged:"));
  valueChanged(this);
}

void jxAUPitchParamView::valueChanged(NSObject*) {
  if (!mParam) return;
  const float pitch = mParam->floatValue();
  const float whole = std::round(pitch / centsPerHalfstep);
  halfsteps->setFloatValue(whole);
  cents->setFloatValue(pitch - whole * centsPerHalfstep);
}

void jxAUPitchParamView::knobsChanged(NSObject* sender) {
  if (!mParam) return;
  mParam->setFloatValue(cents->floatValue() + halfsteps->floatValue() * centsPerHalfstep);
  valueChanged(sender);
}
