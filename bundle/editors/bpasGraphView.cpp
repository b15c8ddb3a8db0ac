#include "bpasGraphView.h"

namespace {

constexpr unsigned long measuringOrder = 10;
constexpr double frequencyRoom = 1.2;  // beyond the parameter's range, as a factor
constexpr float lowestLevel = -25, highestLevel = 10;
constexpr float centsPerOctave = 1200;

enum Parameter : UInt32 { frequencyParameter, bandwidthParameter };

}  // namespace

const Class& bpasGraphView::isa() const {
  return record();
}

const Class& bpasGraphView::record() {
  static const Class c = Class::of<bpasGraphView>("bpasGraphView", jxAUMeasuredResponseView::record());
  return c;
}

bpasGraphView::bpasGraphView(NSRect frame) : jxAUMeasuredResponseView(frame, 2, measuringOrder) {
  addHandleWithColor_mode(orangeHandle(), HandleModeBand);
}

bpasGraphView::Axes bpasGraphView::axes() const {
  const jxAUParam& f = parameter(frequencyParameter);
  return {static_cast<float>(f.minValue() / frequencyRoom), static_cast<float>(f.maxValue() * frequencyRoom),
          lowestLevel, highestLevel};
}

void bpasGraphView::calculateHandle(int index) {
  if (canEdit(index))
    setPoint_width_forHandle(graphPositionForFreq_gain(valueOf(frequencyParameter), 0),
                             widthForOctaves(valueOf(bandwidthParameter) / centsPerOctave), 0);
}

void bpasGraphView::setParamsForHandle_freq_gain(int index, float frequency, float) {
  if (canEdit(index)) parameter(frequencyParameter).setFloatValue(frequency);
}

void bpasGraphView::changeBandWidthForHandle_delta(int index, float delta) {
  if (!canEdit(index)) return;
  parameter(bandwidthParameter)
      .setFloatValue(
          static_cast<float>(valueOf(bandwidthParameter) + static_cast<double>(delta) * centsPerOctave));
}
