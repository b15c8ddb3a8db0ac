#include "lpasGraphView.h"

namespace {

constexpr unsigned long measuringOrder = 10;
constexpr float frequencyRoom = 2.5f;  // beyond the parameter's range, as a factor
constexpr float levelRoom = 1.2f;

enum Parameter : UInt32 { frequencyParameter, levelParameter };

}  // namespace

const Class& lpasGraphView::isa() const {
  return record();
}

const Class& lpasGraphView::record() {
  static const Class c = Class::of<lpasGraphView>("lpasGraphView", jxAUMeasuredResponseView::record());
  return c;
}

lpasGraphView::lpasGraphView(NSRect frame) : jxAUMeasuredResponseView(frame, 2, measuringOrder) {
  addHandleWithColor_mode(orangeHandle(), HandleModePoint);
}

lpasGraphView::Axes lpasGraphView::axes() const {
  const jxAUParam& f = parameter(frequencyParameter);
  const jxAUParam& level = parameter(levelParameter);
  return {f.minValue() / frequencyRoom, f.maxValue() * frequencyRoom, level.minValue() * levelRoom,
          level.maxValue() * levelRoom};
}

void lpasGraphView::calculateHandle(int index) {
  if (canEdit(index))
    setPoint_width_forHandle(graphPositionForFreq_gain(valueOf(frequencyParameter), valueOf(levelParameter)),
                             0, 0);
}

void lpasGraphView::setParamsForHandle_freq_gain(int index, float frequency, float gain) {
  if (!canEdit(index)) return;
  parameter(frequencyParameter).setFloatValue(frequency);
  parameter(levelParameter).setFloatValue(gain);
}
