#include "pmeqGraphView.h"

namespace {

constexpr unsigned long measuringOrder = 10;
constexpr double room = 1.2;                      // beyond the parameters' ranges, as a factor
constexpr double octavesTimesQuality = 1.414214;  // near enough, and its own inverse
constexpr float octavesPerDelta = 0.25f;
constexpr float narrowest = 1e-5f;

enum Parameter : UInt32 { frequencyParameter, qualityParameter, gainParameter };

}  // namespace

const Class& pmeqGraphView::isa() const {
  return record();
}

const Class& pmeqGraphView::record() {
  static const Class c = Class::of<pmeqGraphView>("pmeqGraphView", jxAUMeasuredResponseView::record());
  return c;
}

pmeqGraphView::pmeqGraphView(NSRect frame) : jxAUMeasuredResponseView(frame, 3, measuringOrder) {
  addHandleWithColor_mode(orangeHandle(), HandleModeBand);
}

pmeqGraphView::Axes pmeqGraphView::axes() const {
  const jxAUParam& f = parameter(frequencyParameter);
  const jxAUParam& gain = parameter(gainParameter);
  return {static_cast<float>(f.minValue() / room), static_cast<float>(f.maxValue() * room),
          static_cast<float>(gain.minValue() * room), static_cast<float>(gain.maxValue() * room)};
}

float pmeqGraphView::bandwidth() const {
  return static_cast<float>(octavesTimesQuality / valueOf(qualityParameter));
}

void pmeqGraphView::calculateHandle(int index) {
  if (canEdit(index))
    setPoint_width_forHandle(graphPositionForFreq_gain(valueOf(frequencyParameter), valueOf(gainParameter)),
                             widthForOctaves(bandwidth()), 0);
}

void pmeqGraphView::setParamsForHandle_freq_gain(int index, float frequency, float gain) {
  if (!canEdit(index)) return;
  parameter(frequencyParameter).setFloatValue(frequency);
  parameter(gainParameter).setFloatValue(gain);
}

void pmeqGraphView::changeBandWidthForHandle_delta(int index, float delta) {
  if (!canEdit(index)) return;
  const float wanted = delta * octavesPerDelta + bandwidth();
  const float width = wanted > 0 ? wanted : narrowest;
  parameter(qualityParameter).setFloatValue(static_cast<float>(octavesTimesQuality / width));
}
