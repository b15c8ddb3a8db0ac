#include "AUFilterGraphView.h"

#include <array>

namespace {

constexpr unsigned long measuringOrder = 11;
constexpr UInt32 none = 0xFFFFFFFF;

struct Band {
  UInt32 frequency, gain, bandwidth;
  bool isCenter() const { return bandwidth != none; }
};
constexpr std::array<Band, 5> bands{{{1, 2, none}, {3, 4, 5}, {6, 7, 8}, {9, 10, 11}, {13, 14, none}}};

}  // namespace

const Class& AUFilterGraphView::isa() const {
  return record();
}

const Class& AUFilterGraphView::record() {
  static const Class c =
      Class::of<AUFilterGraphView>("AUFilterGraphView", jxAUMeasuredResponseView::record());
  return c;
}

AUFilterGraphView::AUFilterGraphView(NSRect frame)
    : jxAUMeasuredResponseView(frame, parameterCount, measuringOrder) {
  addHandleWithColor_mode(purpleHandle(), HandleModeLowRegion);
  addHandleWithColor_mode(redHandle(), HandleModeBand);
  addHandleWithColor_mode(orangeHandle(), HandleModeBand);
  addHandleWithColor_mode(greenHandle(), HandleModeBand);
  addHandleWithColor_mode(blueHandle(), HandleModeHighRegion);
}

void AUFilterGraphView::calculateHandle(int index) {
  if (!canEdit(index)) return;
  const Band& band = bands[static_cast<size_t>(index)];
  const float frequency = valueOf(band.frequency) * (band.isCenter() ? antiBug : 1);
  setPoint_width_forHandle(graphPositionForFreq_gain(frequency, valueOf(band.gain)),
                           band.isCenter() ? widthForOctaves(valueOf(band.bandwidth)) : 0,
                           static_cast<unsigned>(index));
}

void AUFilterGraphView::setParamsForHandle_freq_gain(int index, float frequency, float gain) {
  if (!canEdit(index)) return;
  const Band& band = bands[static_cast<size_t>(index)];
  parameter(band.frequency).setFloatValue(band.isCenter() ? frequency / antiBug : frequency);
  parameter(band.gain).setFloatValue(gain);
}

void AUFilterGraphView::changeBandWidthForHandle_delta(int index, float delta) {
  if (!canEdit(index)) return;
  const Band& band = bands[static_cast<size_t>(index)];
  if (band.isCenter()) parameter(band.bandwidth).setFloatValue(valueOf(band.bandwidth) + delta);
}
