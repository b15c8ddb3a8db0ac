#include "ReverbIRview.h"

#include <algorithm>
#include <cmath>

#include "NSBezierPath.h"
#include "NSException.h"
#include "NSGraphicsContext.h"
#include "NumberText.h"
#include "jxAUCurveOutline.h"

namespace {

constexpr double measuringRate = 500;
constexpr unsigned measuringOrder = 10;
constexpr float shownSeconds = 2.048f;  // what that many samples last
constexpr float lowestLevel = -50, levelRange = 40;
constexpr float leastSample = 1e-5f, greatestSample = 1e20f;
constexpr float leftOut = 0.05f;  // pixels that the drawn outline may be off
constexpr float lineWeight = 0.5f;
constexpr AudioUnitParameterID dryWetMix = 0;
constexpr AudioUnitParameterID firstShaping = 1;

}  // namespace

const Class& ReverbIRview::isa() const {
  return record();
}

const Class& ReverbIRview::record() {
  static const Class c = Class::of<ReverbIRview>("ReverbIRview", jxAUGraphDisplay::record())
                             .answers<&ReverbIRview::valueChanged>("valueChanged:");
  return c;
}

void ReverbIRview::setAudioUnit(AudioUnit unit) {
  const SEL changed = NSSelectorFromString("valueChanged:");
  for (AudioUnitParameterID i = 0; i < param.size(); ++i)
    param[i] = std::make_shared<jxAUParam>(AudioUnitParameter{unit, firstShaping + i}, this, changed);
  renderQ = std::make_shared<jxAUProperty>(AudioUnitProperty{unit, kAudioUnitProperty_RenderQuality}, this,
                                           changed);
  impAUwrap = std::make_unique<ImpulseAUwrapper>(unit, measuringRate, measuringOrder, true);
  impAUwrap->setParameterOverrides(
      std::make_shared<ImpulseAUwrapper::Overrides>(ImpulseAUwrapper::Overrides{{dryWetMix, 1.0f}}));
  setOrder(measuringOrder);
  setValues(impAUwrap->renderImpulse());
  mAU = unit;
  addReferenceLines();
}

void ReverbIRview::setOrder(unsigned order) {
  values.assign(size_t{1} << order, 0);
}

void ReverbIRview::storeValues(const float* samples) {
  std::copy_n(samples, values.size(), values.begin());
}

void ReverbIRview::setValues(const float* samples) {
  storeValues(samples);
  setPlotNeedsDisplay();
}

void ReverbIRview::valueChanged(NSObject*) {
  if (!mAU) return;
  changed_ = true;
  setPlotNeedsDisplay();
}

float ReverbIRview::yForDB(float level) const {
  const NSRect plot = inBounds();
  return NSMinY(plot) + (level - lowestLevel) / levelRange * NSHeight(plot);
}

void ReverbIRview::addReferenceLines() {
  const NSRect plot = inBounds();
  for (float level = -50; level <= -20; level += 10) {
    const float y = yForDB(level);
    addReferenceLineFrom_to_text_weight({NSMinX(plot), y}, {NSMaxX(plot), y},
                                        foundation::fixedText(level, 0) + "dB", lineWeight);
  }
  addTimeLines(0, 11);
  addTimeLines(0.1f, 10);
}

void ReverbIRview::addTimeLines(float first, int count) {
  const NSRect plot = inBounds();
  float seconds = first;
  for (int i = 0; i < count; ++i) {
    const float x = NSMinX(plot) + NSWidth(plot) * seconds / shownSeconds;
    addReferenceLineFrom_to_text_weight({x, NSMinY(plot)}, {x, NSMaxY(plot)},
                                        foundation::fixedText(seconds, 1) + "s", lineWeight);
    seconds = static_cast<float>(seconds + 0.2);
  }
}

void ReverbIRview::drawRect(NSRect dirty) {
  if (changed_) {
    changed_ = false;
    NSGuardCallback("measurement", [this] { storeValues(impAUwrap->renderImpulse()); });
  }
  jxAUGraphDisplay::drawRect(dirty);
  const NSRect plot = inBounds();
  const auto envelope = NSBezierPath::bezierPath();
  envelope->moveToPoint(plot.origin);
  jxAUCurveOutline outline(*envelope, leftOut / NSGraphicsContext::currentContext()->scale());
  const auto n = static_cast<float>(values.size());
  for (size_t i = 1; i < values.size(); ++i) {
    const float sample = std::abs(values[i]);
    const float a = sample >= leastSample ? std::min(sample, greatestSample) : leastSample;
    const auto level = static_cast<float>(10 * std::log10(static_cast<double>(a)));
    outline.add({NSMinX(plot) + NSWidth(plot) * (static_cast<float>(i - 1) / n), yForDB(level)});
  }
  outline.end();
  envelope->lineToPoint({NSWidth(frame()), 0});
  graphColor()->set();
  envelope->fill();
  drawGlow(dirty);
}
