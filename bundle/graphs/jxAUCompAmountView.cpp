#include "jxAUCompAmountView.h"

#include <algorithm>

#include "NSBezierPath.h"
#include "NumberText.h"

namespace {

constexpr float fullScale = 20;  // dB over the plot's height

}  // namespace

const Class& jxAUCompAmountView::isa() const {
  return record();
}

const Class& jxAUCompAmountView::record() {
  static const Class c = Class::of<jxAUCompAmountView>("jxAUCompAmountView", jxAUGraphDisplay::record())
                             .answers<&jxAUCompAmountView::setColor>("setColor:")
                             .answers<&jxAUCompAmountView::paramListChanged>("paramListChanged:");
  return c;
}

void jxAUCompAmountView::startWatchingAUparam_numSamples(const AudioUnitParameter& parameter, int samples) {
  amounts.assign(static_cast<size_t>(samples), 0);
  numAmounts = equalAmounts = samples;
  amountPos = 0;
  setUseXUnits_yUnits(false, true);
  for (float level = 10; level <= 40; level += 10) addHoriRefLine_weight(level, 0.5f);
  for (float level = 5; level <= 45; level += 10) addHoriRefLine_weight(level, 0.5f);
  mAUparam = parameter;
  mParamListProperty =
      std::make_shared<jxAUProperty>(AudioUnitProperty{parameter.mAudioUnit, kAudioUnitProperty_ParameterList,
                                                       parameter.mScope, parameter.mElement},
                                     this, NSSelectorFromString("paramListChanged:"));
  paramListChanged(nullptr);
}

void jxAUCompAmountView::paramListChanged(NSObject*) {
  parameterExists = false;
  UInt32 size = 0;
  if (AudioUnitGetPropertyInfo(mAUparam.mAudioUnit, kAudioUnitProperty_ParameterList, mAUparam.mScope,
                               mAUparam.mElement, &size, nullptr) != noErr)
    return;
  std::vector<AudioUnitParameterID> list(size / sizeof(AudioUnitParameterID));
  if (AudioUnitGetProperty(mAUparam.mAudioUnit, kAudioUnitProperty_ParameterList, mAUparam.mScope,
                           mAUparam.mElement, list.data(), &size) != noErr)
    return;
  parameterExists = std::find(list.begin(), list.end(), mAUparam.mParameterID) != list.end();
}

void jxAUCompAmountView::update() {
  if (!mAUparam.mAudioUnit || !parameterExists) return;
  const float before = amounts[static_cast<size_t>(amountPos)];
  float amount = before;
  AudioUnitGetParameter(mAUparam.mAudioUnit, mAUparam.mParameterID, mAUparam.mScope, mAUparam.mElement,
                        &amount);
  amountPos = (amountPos + 1) % numAmounts;
  amounts[static_cast<size_t>(amountPos)] = amount;
  const bool shown = amount == before && equalAmounts >= numAmounts;
  equalAmounts = amount == before ? std::min(equalAmounts + 1, numAmounts) : 1;
  if (!shown) setPlotNeedsDisplay();
}

float jxAUCompAmountView::yForValue(float level) const {
  const NSRect plot = inBounds();
  return NSMinY(plot) + level / fullScale * NSHeight(plot);
}

bool jxAUCompAmountView::addHoriRefLine_weight(float level, float weight) {
  const NSRect plot = inBounds();
  const float y = yForValue(level);
  return addReferenceLineFrom_to_text_weight({NSMinX(plot), y}, {NSMaxX(plot), y},
                                             foundation::fixedText(level, 0) + "dB", weight);
}

void jxAUCompAmountView::drawRect(NSRect dirty) {
  jxAUGraphDisplay::drawRect(dirty);
  if (mAUparam.mAudioUnit) {
    const NSRect plot = inBounds();
    const double step = static_cast<double>(NSWidth(plot)) / numAmounts;
    const auto area = NSBezierPath::bezierPath();
    area->moveToPoint({NSMaxX(plot), NSMinY(plot)});
    for (int k = 0; k < numAmounts; ++k) {
      const int index = (amountPos - k + numAmounts) % numAmounts;
      area->lineToPoint(
          {static_cast<float>(NSMaxX(plot) - k * step), yForValue(amounts[static_cast<size_t>(index)])});
    }
    area->lineToPoint({NSMinX(plot), NSMinY(plot)});
    (mColor ? mColor->colorWithAlphaComponent(0.8f) : graphColor())->set();
    area->fill();
  }
  drawGlow(dirty);
}
