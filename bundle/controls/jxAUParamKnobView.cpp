#include "jxAUParamKnobView.h"

#include "NSImageUtils.h"

const Class& jxAUParamKnobView::isa() const {
  return record();
}

const Class& jxAUParamKnobView::record() {
  static const Class c = Class::of<jxAUParamKnobView>("jxAUParamKnobView", jxAUParamView::record())
                             .answers<&jxAUParamKnobView::knobChanged>("knobChanged:")
                             .answers<&jxAUParamKnobView::beginAction>("beginAction:")
                             .answers<&jxAUParamKnobView::endAction>("endAction:");
  return c;
}

void jxAUParamKnobView::setAUParameter(const AudioUnitParameter& parameter) {
  jxAUParamView::setAUParameter(parameter);
  mParam->setForceLinear(forceLinear);
  setupKnob();
}

void jxAUParamKnobView::setupKnob() {
  const jxAUParam& p = *mParam;
  knob = std::make_shared<jxValueKnob>(bounds(), shownName(), p.unit(), p.displaysLogarithmical(),
                                       p.minValue(), p.maxValue(), p.floatValue(), p.defaultValue());
  knob->setIntegerOnly(p.isInteger());
  if (customColor) knob->setColor(customColor);
  knob->setTarget_action(this, NSSelectorFromString("knobChanged:"));
  addSubview(knob);
}

void jxAUParamKnobView::setColor(std::shared_ptr<NSColor> color) {
  jxAUParamView::setColor(std::move(color));
  if (knob) knob->setColor(customColor);
}

void jxAUParamKnobView::setCustomScale(double scale) {
  jxAUParamView::setCustomScale(scale);
  if (knob) knob->setDefaultValue(mParam->defaultValue());
}

void jxAUParamKnobView::valueChanged(jxAUParam* binding) {
  if (knob && binding) {
    const float value = binding->floatValue();
    knob->setFloatValue_string(value, stringWithNiceFloatValue_digits(value, 6));
  }
  jxAUParamView::valueChanged(binding);
}

void jxAUParamKnobView::knobChanged(NSControl*) {
  mParam->setFloatValue(knob->floatValue());
}

void jxAUParamKnobView::beginAction(NSObject*) {
  static const SEL begin = NSSelectorFromString("beginAction:");
  NSPerformIfAnswered(delegate, begin, this);
}

void jxAUParamKnobView::endAction(NSObject*) {
  static const SEL end = NSSelectorFromString("endAction:");
  NSPerformIfAnswered(delegate, end, this);
}
